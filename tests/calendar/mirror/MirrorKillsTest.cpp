// tests/calendar/mirror/MirrorKillsTest.cpp: a program that is killed at any of its writes loses no
// edit.
#include <gmock/gmock.h>
#include <sys/syscall.h>

#include <algorithm>
#include <cstdlib>
#include <random>

#include "calendar/ics/file/ShortHash.h"
#include "tests/calendar/mirror/MirrorCase.h"
#include "tests/platform/desktop/ChildProcess.h"

namespace {

/// How many more changes of the disk this process lives to make; below 0 for all.
long livesFor = -1;

void CountChange() {
  if (livesFor == 0) ::kill(::getpid(), SIGKILL);
  if (livesFor > 0) --livesFor;
}

}  // namespace

// These stand in for the system's in this program: what they change is all that a kill can divide.
extern "C" int rename(const char* from, const char* to) noexcept {
  CountChange();
  return static_cast<int>(::syscall(SYS_rename, from, to));
}

extern "C" int unlink(const char* path) noexcept {
  CountChange();
  return static_cast<int>(::syscall(SYS_unlink, path));
}

namespace velkor {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;

/// A server's calendar: each request is answered whole, or never came.
class SmallServer {
 public:
  explicit SmallServer(std::string folder) : folder_(std::move(folder)) {
    fs::create_directories(folder_);
  }

  std::vector<std::string> Hrefs() const {
    std::vector<std::string> hrefs;
    for (const auto& entry : fs::directory_iterator(folder_)) {
      hrefs.push_back("/c/" + entry.path().filename().string());
    }
    return hrefs;
  }
  std::string Get(const std::string& href) const {
    std::ifstream file(PathOf(href), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::string ETagOf(const std::string& href) const {
    const std::string bytes = Get(href);
    return bytes.empty() ? "" : ShortHash(bytes);
  }
  void Put(const std::string& href, const std::string& bytes) {
    std::ofstream(PathOf(href), std::ios::binary) << bytes;
  }
  bool Take(const Outgoing& edit, const std::string& href) {
    if (ETagOf(href) != edit.etag) return false;
    if (edit.kind == EditKind::Delete) {
      std::remove(PathOf(href).c_str());
    } else {
      Put(href, edit.bytes);
    }
    return true;
  }

 private:
  std::string PathOf(const std::string& href) const { return folder_ + "/" + href.substr(3); }

  std::string folder_;
};

/// The calendar of a user who edits, of somebody else who does, and of the server between them.
class Life {
 public:
  static constexpr int Shared = 4;
  static constexpr std::size_t Steps = 16;

  explicit Life(const std::string& folder)
      : mirror_(folder + "/mirror"), server_(folder + "/server"), log_(folder + "/log") {}

  void Begin() {
    for (int i = 0; i <= Shared; ++i) {
      const std::string uid = std::to_string(i);
      server_.Put("/c/" + uid + ".ics",
                  ObjectOf(uid, "DTSTART:20260301\nSUMMARY:s\nLOCATION:l\nCATEGORIES:Old\n"));
    }
    Fetch();
  }
  void Run(unsigned seed, std::size_t steps = Steps) {
    std::mt19937 random(seed);
    for (std::size_t step = 0; step < std::min(steps, Steps); ++step) {
      const auto what = random() % 9;
      Do(what, std::to_string(step), static_cast<int>(random() % Shared));
      std::ofstream(log_, std::ios::app) << "x";
    }
  }
  std::size_t StepsDone() const { return fs::exists(log_) ? fs::file_size(log_) : 0; }

  /// @param answers  false for a server whose answers are lost
  void Send(bool answers = true) {
    Outbox outbox(mirror_);
    for (const std::string& name : outbox.Waiting()) {
      while (const auto edit = outbox.Prepare(name)) {
        const std::string href = edit->kind == EditKind::Create ? "/c/" + edit->href : edit->href;
        if (server_.Take(*edit, href)) {
          if (answers) outbox.Sent(*edit, href, server_.ETagOf(href), server_.Get(href));
          break;
        }
        FetchOne(href);
      }
    }
  }
  void Fetch() {
    std::vector<std::string> all = server_.Hrefs();
    for (const ObjectKey& key : mirror_.Objects()) all.push_back(key.href);
    for (const std::string& href : all) FetchOne(href);
    mirror_.SetState({.displayName = "Team", .syncToken = ShortHash(std::to_string(all.size()))});
  }

  std::vector<std::string> OnServer() const {
    std::string all;
    for (const std::string& href : server_.Hrefs()) all += server_.Get(href);
    return Words(ParseIcs(all, "server", Year(2026)));
  }
  std::vector<std::string> Shown() const { return Words(ReadMirror(mirror_.Folder(), Year(2026))); }
  Mirror& OfMirror() { return mirror_; }

 private:
  void FetchOne(const std::string& href) {
    if (server_.Get(href).empty()) {
      mirror_.Remove(href);
    } else {
      mirror_.Put(href, server_.ETagOf(href), server_.Get(href));
    }
  }
  static std::vector<std::string> Words(const ParsedCalendar& calendar) {
    std::vector<std::string> words;
    for (const CalendarItem& item : calendar.items) {
      std::string text = item.fields.subject + " " + item.fields.location;
      for (const std::string& name : item.fields.categories) text += " " + name;
      words.push_back(text);
    }
    std::sort(words.begin(), words.end());
    return words;
  }
  void Do(unsigned long what, const std::string& value, int which) {
    MirrorWriter writer(mirror_, "Team");
    const auto items = ReadMirror(mirror_.Folder(), Year(2026)).items;
    const Date now = Moment(std::stoi(value));
    const auto isOf = [](int number) {
      return [id = EntryIdOfUid(std::to_string(number))](const CalendarItem& item) {
        return item.entryId == id;
      };
    };
    const auto item = std::find_if(items.begin(), items.end(), isOf(which));
    auto last = std::find_if(items.begin(), items.end(), isOf(Shared));
    for (auto one = items.begin(); last == items.end() && one != items.end(); ++one) {
      if (one->fields.subject == "new" + std::to_string(which)) last = one;
    }
    if (what <= 2) {
      CalendarItem after = *item;
      after.lastModified = now;
      after.fields.subject = value;
      writer.WriteChange(after, {.subject = value});
    } else if (what == 3) {
      CalendarItem made = *item;
      made.fields.subject = "new" + std::to_string(which);
      writer.WriteNew(made, false);
    } else if (what == 4) {
      writer.WriteCategory(which % 2 == 0 ? "Old" : "New", which % 2 == 0 ? "New" : "Old", now);
    } else if (what == 5 && last != items.end()) {
      writer.WriteDeletion(*last);
    } else if (what == 6) {
      const std::string href = "/c/" + std::to_string(which) + ".ics";
      std::string theirs = server_.Get(href);
      const std::size_t place = theirs.find("LOCATION:");
      theirs.replace(place, theirs.find('\n', place) - place, "LOCATION:l" + value);
      server_.Put(href, theirs);
    } else if (what == 7) {
      Send(which != 0);
    } else if (what == 8) {
      Fetch();
    }
  }

  Mirror mirror_;
  SmallServer server_;
  std::string log_;
};

class MirrorKills : public MirrorCase {
 protected:
  /// What there is in the end after so many steps of a life that nobody cuts short.
  std::vector<std::string> After(unsigned seed, std::size_t steps) {
    const std::string folder = folder_ + "/whole";
    fs::remove_all(folder);
    Life life(folder);
    life.Begin();
    life.Run(seed, steps);
    End(life);
    return life.OnServer();
  }
  static void End(Life& life) {
    for (int i = 0; i < 2; ++i) {
      life.Send();
      life.Fetch();
    }
  }
};

TEST_F(MirrorKills, LoseNoEditAndBreakNoObject) {
  const char* wanted = std::getenv("VELKOR_KILLS");
  const int kills = wanted ? std::atoi(wanted) : 15;
  std::mt19937 random(7);
  int done = 0;
  for (unsigned seed = 1; done < kills; ++seed) {
    constexpr unsigned Points = 120;
    const long point = static_cast<long>(random() % Points);
    const std::string folder = folder_ + "/killed";
    fs::remove_all(folder);
    Life(folder).Begin();
    ChildProcess child([&] {
      livesFor = point;
      Life(folder).Run(seed);
      return 0;
    });
    if (child.Wait() != -SIGKILL) continue;
    ++done;
    Life life(folder);
    const std::size_t steps = life.StepsDone();
    End(life);
    const auto shown = life.OnServer();
    const auto before = After(seed, steps);
    EXPECT_TRUE(shown == before || shown == After(seed, steps + 1))
        << "seed " << seed << ", killed at change " << point << " in step " << steps << ": "
        << testing::PrintToString(shown) << " for " << testing::PrintToString(before);
    EXPECT_EQ(life.Shown(), shown);
    Outbox outbox(life.OfMirror());
    EXPECT_THAT(outbox.Waiting(), IsEmpty());
    EXPECT_THAT(outbox.Questions(), IsEmpty());
    EXPECT_THAT(outbox.Notes(), IsEmpty());
    EXPECT_THAT(outbox.Refused(), IsEmpty());
  }
}

}  // namespace
}  // namespace velkor
