// hosts/yearplan/window/SetNotices.h: what the calendars of the set on show have to tell and to
// ask.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "calendar/mirror/Outbox.h"
#include "calendar/set/CalendarSet.h"
#include "hosts/yearplan/window/NoticeLine.h"

class QWidget;

namespace velkor {

class Clock;
class MessageBoxes;
class WindowSync;

/// What the notices find around them; all of it outlives them.
struct NoticeSurroundings {
  QWidget& window;
  MessageBoxes& messages;
  Clock& clock;
  WindowSync& sync;
  std::string dataFolder;
  /// An answer has changed what a calendar holds or what is to be sent.
  std::function<void(const std::string& sourceId)> onAnswer;
};

/// Reads the mirrors of server calendars when they have news. Failures to answer are told in
/// message boxes.
class SetNotices {
 public:
  explicit SetNotices(NoticeSurroundings around) : around_(std::move(around)) {}

  /// Everything that waits for the user. Costs one look at each mirror where nothing is new.
  std::vector<Notice> Look(const CalendarSet& set);
  void Answer(const std::string& noticeId, std::size_t answer);
  /// What was put off is asked again.
  void AskAgain() { later_.clear(); }
  /// Edits of a calendar that its server refused, as of the last look.
  std::size_t RefusedOf(const std::string& sourceId) const;
  /// Asks for a file and writes them into it, several into numbered ones.
  void ExportRefused(const std::string& sourceId);

 private:
  struct News {
    SetSource source;
    std::string revision;
    std::vector<MirrorQuestion> questions;
    std::vector<MirrorNote> notes;
    std::vector<RefusedEdit> refused;
  };
  using Answers = std::vector<std::function<void()>>;

  void Read(News& news) const;
  void Tell(const std::string& id, const std::string& text, std::vector<std::string> words,
            Answers answers);
  void TellOfSync(const News& news);
  void TellOfMirror(const News& news);
  /// Steps on a mirror's outbox as an answer.
  std::function<void()> With(const std::string& sourceId,
                             const std::function<void(Outbox&)>& steps) const;
  void Export(const News& news, const std::vector<RefusedEdit>& edits);

  NoticeSurroundings around_;
  std::map<std::string, News> news_;
  std::vector<Notice> notices_;
  std::map<std::string, Answers> answers_;
  /// What the user put off.
  std::set<std::string> later_;
};

}  // namespace velkor
