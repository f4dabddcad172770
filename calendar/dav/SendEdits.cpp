// calendar/dav/SendEdits.cpp: PUT and DELETE under a condition, and what each answer means.
#include "calendar/dav/SendEdits.h"

#include <optional>
#include <utility>
#include <vector>

#include "calendar/dav/DavClient.h"
#include "calendar/dav/DavPath.h"
#include "calendar/dav/DavXml.h"

namespace velkor {
namespace {

/// Where the server has the appointment already that an edit would make (RFC 4791 section 5.3.2.1).
struct UidConflict {
  std::string href;
};

std::optional<UidConflict> UidConflictIn(const HttpResponse& response,
                                         const std::string& collection) {
  if (response.status != 403 && response.status != 409 && response.status != 412) return {};
  for (const DavValue& condition : ReadConditions(response.body)) {
    if (condition.name != dav::NoUidConflict) continue;
    const auto href =
        condition.hrefs.empty() ? std::nullopt : ObjectHref(collection, condition.hrefs.front());
    return UidConflict{href.value_or("")};
  }
  return {};
}

/// Why a server refuses for good, for people.
std::string ReasonOf(const HttpResponse& response, const ServerCalendar& calendar) {
  if (calendar.readOnly) return "You may read this calendar, but not change it.";
  for (const DavValue& condition : ReadConditions(response.body)) {
    const auto is = [&](std::string_view name) { return condition.name.ends_with(name); };
    if (is(" max-resource-size")) return "The server finds this appointment too large.";
    if (is(" max-instances")) return "The server finds that this appointment recurs too often.";
    if (is(" min-date-time") || is(" max-date-time")) {
      return "The server takes no appointments this far away in time.";
    }
    if (is(" valid-calendar-data") || is(" valid-calendar-object-resource")) {
      return "The server finds this appointment faulty.";
    }
  }
  return RefusalOf(response).Description();
}

/// Goes on with one edit until it is sent, refused or left for later.
class EditSender {
 public:
  EditSender(HttpClient& client, const ServerCalendar& calendar, Mirror& mirror, Outbox& outbox,
             const SendOptions& options)
      : client_(client),
        calendar_(calendar),
        mirror_(mirror),
        outbox_(outbox),
        options_(options),
        secondsAhead_(options.secondsAhead) {}

  SentEdits Run() {
    const std::vector<std::string> names = outbox_.Waiting();
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (options_.leave.contains(names[i])) continue;
      SendOne(names[i]);
      if (options_.progress) options_.progress(i + 1, names.size());
    }
    return std::move(result_);
  }

 private:
  enum class Next { Again, Done };

  void SendOne(const std::string& name) {
    constexpr int MostTries = 12;
    newNames_ = 0;
    isUnconditional_ = false;
    for (int tries = 0; tries < MostTries; ++tries) {
      const auto edit = outbox_.Prepare(name, secondsAhead_);
      if (!edit) return;
      if (Try(*edit) == Next::Done) return;
    }
    Wait(name, "Others keep changing an appointment that you changed.");
  }

  Next Try(const Outgoing& edit) {
    const std::string href = edit.kind == EditKind::Create
                                 ? NewObjectHref(calendar_.url, edit.href, newNames_)
                                 : edit.href;
    const std::string etag = StrongETag(edit.etag);
    // Without an entity tag, a look tells whether the object is still the same.
    if (edit.kind != EditKind::Create && etag.empty() && !isUnconditional_) {
      return LookAgain(edit, href);
    }
    HttpRequest request{edit.kind == EditKind::Delete ? "DELETE" : "PUT",
                        ObjectUrl(calendar_.url, href),
                        {},
                        edit.bytes};
    if (edit.kind != EditKind::Delete) {
      request.headers.emplace_back("Content-Type", "text/calendar; charset=utf-8");
    }
    if (edit.kind == EditKind::Create) {
      request.headers.emplace_back("If-None-Match", "*");
    } else if (!isUnconditional_) {
      request.headers.emplace_back("If-Match", etag);
    }
    isUnconditional_ = false;
    const HttpResponse response = Send(request);
    const bool isDeleted = edit.kind == EditKind::Delete && IsGone(response.status);
    return response.IsSuccess() || isDeleted ? Taken(edit, href, response)
                                             : Refused(edit, href, response);
  }

  HttpResponse Send(const HttpRequest& request) { return Heard(client_.Send(request)); }
  HttpResponse Get(const std::string& href) {
    return Heard(GetObject(client_, calendar_.url, href));
  }
  HttpResponse Heard(HttpResponse response) {
    secondsAhead_ = response.secondsAhead.value_or(secondsAhead_);
    if (IsBusy(response.status)) throw RefusalOf(response);
    return response;
  }

  Next Taken(const Outgoing& edit, const std::string& sentTo, const HttpResponse& response) {
    ExpectNoPage(response);
    const auto moved = ObjectHref(calendar_.url, response.Header("location"));
    const std::string& href = moved ? *moved : sentTo;
    const std::string etag = response.Header("etag");
    const bool isAsSent = !etag.empty() && etag == StrongETag(etag);
    if (edit.kind == EditKind::Delete || isAsSent) {
      outbox_.Sent(edit, href, etag, edit.bytes);
    } else {
      // The server has made something else of it, or does not tell.
      const HttpResponse stored = Get(href);
      outbox_.Sent(edit, href, StrongETag(stored.Header("etag")),
                   stored.IsSuccess() ? stored.body : edit.bytes);
    }
    ++result_.sent;
    return Next::Done;
  }

  Next Refused(const Outgoing& edit, const std::string& href, const HttpResponse& response) {
    if (edit.kind == EditKind::Create) {
      if (const auto conflict = UidConflictIn(response, calendar_.url)) {
        return TakeOver(edit, *conflict);
      }
    }
    const bool isOther =
        response.status == 412 || (edit.kind != EditKind::Create && IsGone(response.status));
    if (isOther) return LookAgain(edit, href);
    const bool mayCome = IsForNow(response.status) || IsGone(response.status) ||
                         !response.Header("retry-after").empty();
    if (mayCome) return Wait(edit.name, RefusalOf(response).Description());
    ++result_.refused;
    outbox_.Refuse(edit, ReasonOf(response, calendar_));
    return Next::Done;
  }

  /// Fetches what the server has in the place of the object that the edit was made for.
  Next LookAgain(const Outgoing& edit, const std::string& href) {
    const HttpResponse theirs = Get(href);
    const bool isNew = edit.kind == EditKind::Create;
    if (IsGone(theirs.status)) {
      if (!isNew) mirror_.Remove(href);
      return Next::Again;
    }
    if (!theirs.IsSuccess()) return Wait(edit.name, RefusalOf(theirs).Description());
    if (!isNew && IsSame(edit, theirs)) {
      // Its entity tag is of no use; nobody changed the object a moment ago.
      isUnconditional_ = true;
      return Next::Again;
    }
    mirror_.Put(href, StrongETag(theirs.Header("etag")), theirs.body);
    // An appointment of somebody else may have the name.
    if (isNew) ++newNames_;
    return Next::Again;
  }

  bool IsSame(const Outgoing& edit, const HttpResponse& theirs) const {
    const std::string etag = StrongETag(theirs.Header("etag"));
    if (!etag.empty() || !edit.etag.empty()) return etag == StrongETag(edit.etag);
    const auto ours = mirror_.Object(edit.name);
    return ours && ours->bytes == theirs.body;
  }

  /// The appointment is there already, under another address.
  Next TakeOver(const Outgoing& edit, const UidConflict& conflict) {
    if (!conflict.href.empty()) {
      const HttpResponse theirs = Get(conflict.href);
      if (theirs.IsSuccess()) {
        mirror_.Put(conflict.href, StrongETag(theirs.Header("etag")), theirs.body);
        return Next::Again;
      }
    }
    if (!options_.isUpToDate) {
      ++result_.conflicts;
      return Next::Done;
    }
    ++result_.refused;
    outbox_.Refuse(edit, "The server has another appointment with the same identifier.");
    return Next::Done;
  }

  Next Wait(const std::string& name, std::string why) {
    result_.waiting.insert(name);
    result_.trouble = std::move(why);
    return Next::Done;
  }

  HttpClient& client_;
  const ServerCalendar& calendar_;
  Mirror& mirror_;
  Outbox& outbox_;
  const SendOptions& options_;
  std::int64_t secondsAhead_;
  /// How many names for a new object were taken.
  int newNames_ = 0;
  /// A look has just shown that the object is the one that is to be replaced.
  bool isUnconditional_ = false;
  SentEdits result_;
};

}  // namespace

SentEdits SendEdits(HttpClient& client, const ServerCalendar& calendar, Mirror& mirror,
                    Outbox& outbox, const SendOptions& options) {
  return EditSender(client, calendar, mirror, outbox, options).Run();
}

}  // namespace velkor
