// hosts/vkrSync/RunJob.cpp: each kind of job, and each kind of end.
#include "hosts/vkrSync/RunJob.h"

#include <new>

#include "calendar/dav/Discovery.h"
#include "calendar/dav/MakeCalendar.h"
#include "calendar/dav/ServerSync.h"
#include "calendar/net/HttpClient.h"
#include "calendar/net/Subscription.h"

namespace velkor {
namespace {

HttpAccess AccessOf(const SyncJob& job) {
  return {WebAddressesOf(job.location).front(), job.user, job.password, job.trusted};
}

SyncOutcome UpdateAddress(const SyncJob& job, const SyncReport& report) {
  HttpClient client(AccessOf(job));
  if (BringUpToDate(client, job.location, job.place)) report.Tell(SyncChanged{});
  const SubscriptionState state = LoadSubscriptionState(job.place);
  report.Tell(SyncContent{state.name, state.events});
  return {.done = true, .interval = state.interval};
}

SyncOutcome UpdateMirror(const SyncJob& job, const SyncReport& report) {
  HttpClient client(AccessOf(job));
  Mirror mirror(job.place);
  const ServerSyncResult result =
      SyncServerCalendar(client, job.location, mirror, [&](std::size_t done, std::size_t of) {
        report.Tell(SyncStep{static_cast<std::int64_t>(done), static_cast<std::int64_t>(of)});
      });
  if (result.changed) report.Tell(SyncChanged{});
  const MirrorState state = mirror.State();
  if (!state.trouble.empty()) {
    return {.done = false, .offline = state.offline, .reason = state.trouble};
  }
  if (result.waiting > 0) {
    return {.done = false, .reason = "The server does not take all changes now."};
  }
  return {.done = true};
}

FoundCalendar FoundOf(const ServerCalendar& calendar) {
  return {calendar.url, calendar.name, calendar.colour, calendar.readOnly};
}

SyncOutcome Discover(const SyncJob& job, const SyncReport& report) {
  const DiscoveredAccount account = DiscoverCalendars(job.location, AccessOf(job));
  SyncCalendars found{account.home, {}};
  for (const ServerCalendar& each : account.calendars) found.calendars.push_back(FoundOf(each));
  report.Tell(found);
  return {.done = true};
}

SyncOutcome Make(const SyncJob& job, const SyncReport& report) {
  HttpClient client(AccessOf(job));
  MakeServerCalendar(client, job.location, job.name, job.colour);
  return Discover(job, report);
}

SyncOutcome Run(const SyncJob& job, const SyncReport& report) {
  switch (job.kind) {
    case SyncJob::Kind::Address:
      return UpdateAddress(job, report);
    case SyncJob::Kind::Server:
      return UpdateMirror(job, report);
    case SyncJob::Kind::Discover:
      return Discover(job, report);
    case SyncJob::Kind::Make:
      return Make(job, report);
  }
  return {};
}

SyncOutcome OutcomeOf(const NetworkFault& fault, const SyncJob& job, const SyncReport& report) {
  const NetworkFault::Details& told = fault.Told();
  if (told.certificate) report.Tell(*told.certificate);
  if (told.kind == NetworkFault::Kind::Login) report.Tell(SyncLogin{told.host, job.user});
  return {.done = false,
          .offline = told.kind == NetworkFault::Kind::Offline,
          .reason = fault.Description(),
          .retryAfter = told.retryAfter};
}

SyncOutcome Try(const SyncJob& job, const SyncReport& report) {
  try {
    return Run(job, report);
  } catch (const NetworkFault& fault) {
    return OutcomeOf(fault, job, report);
  } catch (const Error& error) {
    return {.done = false, .reason = error.Description()};
  } catch (const std::bad_alloc&) {
    return {.done = false, .reason = "The calendar needs more memory than is allowed."};
  } catch (const std::exception& error) {
    return {.done = false, .reason = error.what()};
  }
}

}  // namespace

bool RunJob(const SyncJob& job, const SyncReport& report) {
  const SyncOutcome outcome = Try(job, report);
  report.Tell(outcome);
  return outcome.done;
}

}  // namespace velkor
