// The films that a disc is made of, each with its streams.
#pragma once

#include <QAbstractItemModel>
#include <QStringList>
#include <cstdint>
#include <string>
#include <vector>

#include "base/message.h"
#include "menu/disc_order.h"
#include "ui/film_look.h"
#include "ui/listed_film.h"

namespace quorvelant {

enum class FilmColumn : std::uint8_t { Name, Language, Facts, After };

class FilmListModel : public QAbstractItemModel {
  Q_OBJECT
 public:
  // What a cell can be, where that is one of a list.
  static constexpr int ChoicesRole = Qt::UserRole + 1;

  explicit FilmListModel(QObject* parent = nullptr) : QAbstractItemModel(parent) {}

  // Files and folders, as a user brings them: videos become films, with what lies beside them under their
  // names; sound, subtitles and chapter lists go to the film of their name. Gives what is taken by no film.
  std::vector<Message> Add(const std::vector<std::string>& paths);
  // A film with its streams, or one stream.
  void Remove(const QModelIndex& index);
  // Among films, or among the streams of their kind.
  [[nodiscard]] bool CanMove(const QModelIndex& index, int by) const;
  void Move(const QModelIndex& index, int by);

  [[nodiscard]] bool IsEmpty() const { return films_.empty(); }
  [[nodiscard]] std::vector<OrderedFilm> Films() const;
  [[nodiscard]] std::vector<std::string> SubtitleLanguages() const;

  void TakeLook(FilmsLook look);
  [[nodiscard]] const FilmsLook& Look() const { return look_; }

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& index) const override;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 signals:
  // Films or streams came, went, moved or were changed.
  void ListChanged();

 private:
  [[nodiscard]] const ListedFilm* FilmAt(const QModelIndex& index) const;  // of the film's own row
  [[nodiscard]] const ListedFilm* FilmAround(const QModelIndex& index) const;
  [[nodiscard]] const ListedStream* StreamAt(const QModelIndex& index) const;
  [[nodiscard]] int RowOf(quintptr id) const;
  [[nodiscard]] bool HasFile(const std::string& file) const;
  [[nodiscard]] std::string FreeName(const std::string& name) const;
  [[nodiscard]] const FilmFileLook* LookAt(const std::string& file) const;
  void TakeFilm(const FilmFiles& film);
  void AddStream(std::size_t film, ListedStream stream);
  void AddStreams(std::size_t film, const FilmFiles& files);
  [[nodiscard]] QString NameOf(const ListedFilm& film, const ListedStream& stream) const;
  [[nodiscard]] QString TextOf(const QModelIndex& index) const;
  [[nodiscard]] QString TipOf(const QModelIndex& index) const;
  [[nodiscard]] bool IsUnfit(const QModelIndex& index) const;
  [[nodiscard]] QStringList ChoicesOf(const QModelIndex& index) const;

  std::vector<ListedFilm> films_;
  FilmsLook look_;
  quintptr lastId_ = 0;
};

}  // namespace quorvelant
