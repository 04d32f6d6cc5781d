#include "ui/film_list_model.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <utility>

#include "model/cls_dvd.h"
#include "model/tracks.h"
#include "ui/brought_files.h"
#include "ui/film_sorting.h"
#include "ui/plain_tool_tip.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

constexpr int ColumnCount = 4;

FilmColumn ColumnOf(const QModelIndex& index) {
  return static_cast<FilmColumn>(index.column());
}

QString FileName(const std::string& path) {
  return Shown(std::filesystem::path(path).filename().string());
}

// In the order of `AfterFilm`.
QStringList AfterWords() {
  return {FilmListModel::tr("Menu"), FilmListModel::tr("Next film"), FilmListModel::tr("Repeat"),
          FilmListModel::tr("Stop")};
}

QStringList LanguageWords() {
  QStringList words;
  for (const std::string_view language : CLsDVD::LanguageArray()) {
    words << Shown(language);
  }
  return words;
}

}  // namespace

// --- files come ---

std::vector<Message> FilmListModel::Add(const std::vector<std::string>& paths) {
  std::vector<Message> told;
  std::vector<std::string> fresh;
  for (const std::string& file : FilesBelow(paths, told)) {
    if (!HasFile(file) && std::ranges::find(fresh, file) == fresh.end()) {
      fresh.push_back(file);
    }
  }
  std::vector<std::string> listed;
  std::ranges::transform(films_, std::back_inserter(listed), &ListedFilm::Video);
  const std::vector<FilmFiles> films = SortToFilms(std::move(listed), fresh, told);
  std::ranges::for_each(films, [this](const FilmFiles& film) { TakeFilm(film); });
  emit ListChanged();
  return told;
}

void FilmListModel::TakeFilm(const FilmFiles& film) {
  const auto known = std::ranges::find(films_, film.Video, &ListedFilm::Video);
  if (known == films_.end()) {
    const int row = static_cast<int>(films_.size());
    beginInsertRows({}, row, row);
    ListedFilm listed;
    listed.Id = ++lastId_;
    listed.Name = FreeName(film.Name);
    listed.Video = film.Video;
    films_.push_back(std::move(listed));
    endInsertRows();
    AddStreams(films_.size() - 1, film);
  } else {
    AddStreams(static_cast<std::size_t>(known - films_.begin()), film);
  }
}

void FilmListModel::AddStreams(std::size_t film, const FilmFiles& files) {
  for (const FilmFiles::Stream& sound : files.Audio) {
    AddStream(film, {FileRole::Audio, sound});
  }
  for (const FilmFiles::Stream& subtitles : files.Subtitles) {
    AddStream(film, {FileRole::Subtitles, subtitles});
  }
  if (!files.Chapters.empty() && !films_[film].HasChapters()) {
    AddStream(film, {FileRole::Chapters, {.File = files.Chapters, .Language = {}}});
  }
}

void FilmListModel::AddStream(std::size_t film, ListedStream stream) {
  if (stream.Source.Language.empty() && stream.Role != FileRole::Chapters) {
    stream.Source.Language = AudioStream{}.Language;  // as a new stream has it
  }
  const int row = static_cast<int>(films_[film].PlaceFor(stream.Role));
  beginInsertRows(index(static_cast<int>(film), 0), row, row);
  std::vector<ListedStream>& streams = films_[film].Streams;
  streams.insert(streams.begin() + row, std::move(stream));
  endInsertRows();
}

bool FilmListModel::HasFile(const std::string& file) const {
  return std::ranges::any_of(films_, [&file](const ListedFilm& film) { return film.HasFile(file); });
}

// Menus name films, and pages are files that bear their names.
std::string FilmListModel::FreeName(const std::string& name) const {
  std::string free = name;
  for (int number = 2; std::ranges::find(films_, free, &ListedFilm::Name) != films_.end(); ++number) {
    free = fmt::format("{} {}", name, number);
  }
  return free;
}

// --- rows go and move ---

void FilmListModel::Remove(const QModelIndex& index) {
  if (!index.isValid()) {
    return;
  }
  const int row = index.row();
  beginRemoveRows(index.parent(), row, row);
  if (FilmAt(index) != nullptr) {
    films_.erase(films_.begin() + row);
  } else {
    auto& streams = films_[static_cast<std::size_t>(index.parent().row())].Streams;
    streams.erase(streams.begin() + row);
  }
  endRemoveRows();
  emit ListChanged();
}

bool FilmListModel::CanMove(const QModelIndex& index, int by) const {
  const QModelIndex other = index.isValid() ? index.sibling(index.row() + by, 0) : QModelIndex();
  if (!other.isValid()) {
    return false;
  }
  const ListedStream* const stream = StreamAt(index);
  return stream == nullptr || StreamAt(other)->Role == stream->Role;
}

void FilmListModel::Move(const QModelIndex& index, int by) {
  if (!CanMove(index, by)) {
    return;
  }
  const int row = index.row();
  const QModelIndex around = index.parent();
  const int other = row + by;
  const auto swap = [row, other](auto& list) {
    std::swap(list[static_cast<std::size_t>(row)], list[static_cast<std::size_t>(other)]);
  };
  beginMoveRows(around, row, row, around, by > 0 ? row + 2 : row - 1);
  if (around.isValid()) {
    swap(films_[static_cast<std::size_t>(around.row())].Streams);
  } else {
    swap(films_);
  }
  endMoveRows();
  if (around.isValid()) {  // streams are numbered
    emit dataChanged(this->index(0, 0, around), this->index(rowCount(around) - 1, ColumnCount - 1, around));
  }
  emit ListChanged();
}

// --- what is told of them ---

std::vector<OrderedFilm> FilmListModel::Films() const {
  std::vector<OrderedFilm> films;
  std::ranges::transform(films_, std::back_inserter(films), &ListedFilm::Ordered);
  return films;
}

std::vector<std::string> FilmListModel::SubtitleLanguages() const {
  std::vector<std::string> languages;
  for (const ListedFilm& film : films_) {
    for (const ListedStream& stream : film.Streams) {
      const std::string& language = stream.Source.Language;
      if (stream.Role == FileRole::Subtitles && std::ranges::find(languages, language) == languages.end()) {
        languages.push_back(language);
      }
    }
  }
  return languages;
}

void FilmListModel::TakeLook(FilmsLook look) {
  look_ = std::move(look);
  for (int row = 0; row < rowCount(); ++row) {
    const QModelIndex film = index(row, 0);
    emit dataChanged(film, index(row, ColumnCount - 1));
    if (rowCount(film) > 0) {
      emit dataChanged(index(0, 0, film), index(rowCount(film) - 1, ColumnCount - 1, film));
    }
  }
}

// --- the model ---

int FilmListModel::RowOf(quintptr id) const {
  return static_cast<int>(std::ranges::find(films_, id, &ListedFilm::Id) - films_.begin());
}

const ListedFilm* FilmListModel::FilmAt(const QModelIndex& index) const {
  return index.isValid() && index.internalId() == 0 ? &films_.at(static_cast<std::size_t>(index.row()))
                                                    : nullptr;
}

const ListedFilm* FilmListModel::FilmAround(const QModelIndex& index) const {
  return FilmAt(index.parent().isValid() ? index.parent() : index);
}

const ListedStream* FilmListModel::StreamAt(const QModelIndex& index) const {
  const ListedFilm* const film = index.isValid() ? FilmAt(index.parent()) : nullptr;
  return film != nullptr ? &film->Streams.at(static_cast<std::size_t>(index.row())) : nullptr;
}

const FilmFileLook* FilmListModel::LookAt(const std::string& file) const {
  const auto look = look_.Files.find(file);
  return look == look_.Files.end() ? nullptr : &look->second;
}

QModelIndex FilmListModel::index(int row, int column, const QModelIndex& parent) const {
  if (row < 0 || row >= rowCount(parent) || column < 0 || column >= ColumnCount) {
    return {};
  }
  const ListedFilm* const film = FilmAt(parent);
  return createIndex(row, column, film != nullptr ? film->Id : quintptr{0});
}

QModelIndex FilmListModel::parent(const QModelIndex& index) const {
  return index.isValid() && index.internalId() != 0 ? createIndex(RowOf(index.internalId()), 0, quintptr{0})
                                                    : QModelIndex();
}

int FilmListModel::rowCount(const QModelIndex& parent) const {
  if (!parent.isValid()) {
    return static_cast<int>(films_.size());
  }
  const ListedFilm* const film = parent.column() == 0 ? FilmAt(parent) : nullptr;
  return film != nullptr ? static_cast<int>(film->Streams.size()) : 0;
}

int FilmListModel::columnCount(const QModelIndex& /*parent*/) const {
  return ColumnCount;
}

QString FilmListModel::NameOf(const ListedFilm& film, const ListedStream& stream) const {
  if (stream.Role == FileRole::Chapters) {
    return tr("Chapters");
  }
  const std::size_t number = film.NumberOf(stream);
  const FilmFileLook* const video = LookAt(film.Video);
  return stream.Role == FileRole::Audio ? tr("Audio %1").arg(number)
         : video == nullptr             ? tr("Sub %1").arg(number)
                                        : Shown(SubtitleLabel(number, SubtitleModeOf(*video)));
}

QString FilmListModel::TextOf(const QModelIndex& index) const {
  const ListedFilm* const film = FilmAround(index);
  const ListedStream* const stream = StreamAt(index);
  const std::string& file = stream != nullptr ? stream->Source.File : film->Video;
  const FilmFileLook* const look = LookAt(file);
  switch (ColumnOf(index)) {
    case FilmColumn::Name:
      return stream != nullptr ? NameOf(*film, *stream) : Shown(film->Name);
    case FilmColumn::Language:
      return stream == nullptr || stream->Role == FileRole::Chapters ? QString()
                                                                     : Shown(stream->Source.Language);
    case FilmColumn::Facts:
      return look == nullptr || look->Facts.empty()
                 ? FileName(file)
                 : QStringLiteral("%1: %2").arg(FileName(file), Shown(look->Facts));
    default:
      return stream != nullptr ? QString() : AfterWords().at(static_cast<int>(film->After));
  }
}

QString FilmListModel::TipOf(const QModelIndex& index) const {
  const ListedFilm* const film = FilmAround(index);
  const ListedStream* const stream = StreamAt(index);
  const FilmFileLook* const video = LookAt(film->Video);
  if (ColumnOf(index) == FilmColumn::Name && stream != nullptr && stream->Role == FileRole::Subtitles &&
      video != nullptr) {
    return Shown(SubtitleExplanation(film->NumberOf(*stream), SubtitleModeOf(*video)));
  }
  return Shown(stream != nullptr ? stream->Source.File : film->Video);
}

bool FilmListModel::IsUnfit(const QModelIndex& index) const {
  const ListedStream* const stream = StreamAt(index);
  const FilmFileLook* const look = LookAt(stream != nullptr ? stream->Source.File : FilmAround(index)->Video);
  return look != nullptr && look->IsUnfit;
}

QStringList FilmListModel::ChoicesOf(const QModelIndex& index) const {
  if (!(flags(index) & Qt::ItemIsEditable)) {
    return {};
  }
  switch (ColumnOf(index)) {
    case FilmColumn::Language:
      return LanguageWords();
    case FilmColumn::After:
      return AfterWords();
    default:
      return {};
  }
}

QVariant FilmListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return {};
  }
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return TextOf(index);
    case Qt::ToolTipRole:
      return PlainToolTip(TipOf(index));
    case Qt::AccessibleTextRole:
      return IsUnfit(index) && ColumnOf(index) == FilmColumn::Facts ? tr("Unfit: %1").arg(TextOf(index))
                                                                    : TextOf(index);
    case ChoicesRole:
      return ChoicesOf(index);
    default:
      return {};
  }
}

bool FilmListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable)) {
    return false;
  }
  const QModelIndex around = index.parent();
  ListedFilm& film = films_[static_cast<std::size_t>(around.isValid() ? around.row() : index.row())];
  const QString text = value.toString().trimmed();
  if (ColumnOf(index) == FilmColumn::Name) {
    if (text.isEmpty()) {
      return false;
    }
    film.Name = text.toStdString();
  } else {
    const qsizetype choice = ChoicesOf(index).indexOf(text);
    if (choice < 0) {
      return false;
    }
    if (around.isValid()) {
      film.Streams[static_cast<std::size_t>(index.row())].Source.Language = text.toStdString();
    } else {
      film.After = static_cast<AfterFilm>(choice);
    }
  }
  emit dataChanged(index, index);
  emit ListChanged();
  return true;
}

QVariant FilmListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
    return {};
  }
  const QStringList titles{tr("Film"), tr("Language"), tr("File"), tr("At its end")};
  return section < titles.size() ? titles.at(section) : QVariant();
}

Qt::ItemFlags FilmListModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) {
    return Qt::NoItemFlags;
  }
  const Qt::ItemFlags plain = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  const ListedStream* const stream = StreamAt(index);
  const FilmColumn column = ColumnOf(index);
  const bool isEditable = stream == nullptr
                              ? column == FilmColumn::Name || column == FilmColumn::After
                              : column == FilmColumn::Language && stream->Role != FileRole::Chapters;
  return isEditable ? plain | Qt::ItemIsEditable : plain;
}

}  // namespace quorvelant
