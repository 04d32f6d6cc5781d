// The pictures of the track that the viewer shows, and that one of them that is looked at.
#pragma once

#include <QImage>
#include <QObject>
#include <QString>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "analysis/picture_index.h"
#include "edit/track_viewer.h"
#include "ui/document.h"
#include "ui/jobs.h"
#include "ui/picture_worker.h"
#include "ui/recent_cache.h"

namespace quorvelant {

// What the list of a track's pictures hangs on.
struct PictureSources {
  std::vector<VideoPlay> Plays;
  std::string Type;
  std::string Standard;
  std::string Coding;
  std::string Folder;
  bool operator==(const PictureSources&) const = default;
};

// Listed and decoded by the worker; a film without an index is indexed by a job, once. The newest request
// wins, and pictures are kept for the next time.
class TrackPictures : public QObject {
  Q_OBJECT
 public:
  TrackPictures(Document& document, Jobs& jobs, PictureWorker& worker);

  // The pictures of another track, or of none: those of the former one are forgotten. The list comes later.
  void Show(std::optional<std::size_t> track);
  // The track may have other sources now; the present list stays until the new one comes.
  void Follow();
  // Where a film could not be read, it may be there by now.
  void LookAgain();
  // The picture of this place in the list: at once where it is kept, or else later; until then the last one
  // stays. There is none beyond the list.
  void Find(std::size_t picture);

  // Nothing once the track is gone.
  [[nodiscard]] std::optional<std::size_t> TrackIndex() const;
  [[nodiscard]] const std::vector<ViewerPicture>& All() const { return pictures_; }
  [[nodiscard]] std::int64_t Frames() const { return frames_; }  // of the track; 0 while it is not known
  [[nodiscard]] const QImage& Now() const { return now_; }
  // Whether what `Find` was asked for is there, or known not to be.
  [[nodiscard]] bool IsFound() const { return isFound_; }
  // Why there is no picture; empty where there is one.
  [[nodiscard]] QString Hindrance() const;

 signals:
  void ListTaken();    // to be answered by `Find`
  void ListChanged();  // after that, also with the words
  void Found();

 private:
  void List();
  void TakeList(std::uint64_t number, const PictureList& list);
  void TakePicture(std::uint64_t number, const PictureOrder& order, const FoundPicture& found);
  void Index(const std::vector<std::string>& films);
  void TakeIndexes(const std::vector<std::string>& films, const IndexRun& run);

  Document& document_;
  Jobs& jobs_;
  PictureWorker& worker_;
  std::optional<std::size_t> track_;
  PictureSources sources_;
  std::vector<ViewerPicture> pictures_;
  std::int64_t frames_ = 0;
  QImage now_;
  bool isListed_ = false;
  bool isFound_ = false;
  std::string why_;  // there are no pictures, or not this one
  std::uint64_t listNumber_ = 0;
  std::uint64_t findNumber_ = 0;
  FreshIndexes fresh_;
  std::set<std::string> indexing_;   // films in work
  std::set<std::string> attempted_;  // films of the track whose indexing has ended, however
  RecentCache<PictureOrder, QImage> cache_{std::size_t{64} << 20U};
};

}  // namespace quorvelant
