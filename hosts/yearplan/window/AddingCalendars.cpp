// hosts/yearplan/window/AddingCalendars.cpp: from what is typed to jobs, from answers to calendars
// of a set.
#include "hosts/yearplan/window/AddingCalendars.h"

#include "calendar/set/LocalPlaces.h"
#include "hosts/Passwords.h"
#include "hosts/SetSync.h"
#include "hosts/yearplan/window/AccountDialog.h"
#include "hosts/yearplan/window/AddressDialog.h"
#include "hosts/yearplan/window/ColourSquare.h"
#include "hosts/yearplan/window/DialogJob.h"

namespace velkor {
namespace {

SetSource SourceOf(const AddressWish& wish) {
  return {.kind = SourceKind::Address, .location = wish.address, .user = wish.login.user};
}

std::string InWords(const SyncContent& content) {
  if (content.events == 1) return "A calendar with 1 appointment.";
  return "A calendar with " + std::to_string(content.events) + " appointments.";
}

SetSource SourceOf(const FoundCalendar& found, const ServerAccount& account) {
  return {.kind = SourceKind::Server,
          .location = found.url,
          .user = account.login.user,
          .name = found.name,
          .colour = ColourOfServer(found.colour)};
}

SyncJob JobOf(SyncJob::Kind kind, const ServerAccount& account) {
  return {.kind = kind,
          .location = account.address,
          .user = account.login.user,
          .password = account.login.password};
}

}  // namespace

std::vector<SetSource> AskForAddress(const AddingSurroundings& around) {
  DialogJob* running = nullptr;
  AddressDialog dialog(
      around.window, {.check =
                          [&](const AddressWish& wish) {
                            running->Run({.kind = SyncJob::Kind::Address,
                                          .location = wish.address,
                                          .place = LocalPlaceOf(SourceOf(wish), around.dataFolder),
                                          .user = wish.login.user,
                                          .password = wish.login.password});
                          },
                      .stop = [&] { running->Stop(); }});
  DialogJob job(dialog, around.settings, around.program);
  running = &job;
  SyncContent content;
  job.Hear({.step =
                [&](const SyncStep& step) {
                  dialog.ShowProgress("Reading...", static_cast<int>(step.done),
                                      static_cast<int>(step.of));
                },
            .found =
                [&](const SyncEvent& event) {
                  if (const auto* it = std::get_if<SyncContent>(&event)) content = *it;
                },
            .done = [&] { dialog.ShowFound(content.name, InWords(content)); },
            .failed = [&](const std::string& why) { dialog.ShowFault(why); },
            .login = [&](const std::string& why) { dialog.AskForLogin(why); }});
  if (dialog.exec() != QDialog::Accepted) return {};
  const AddressWish wish = dialog.Wish();
  SetSource source = SourceOf(wish);
  if (dialog.Name() != content.name) source.name = dialog.Name();
  if (!source.user.empty()) {
    around.passwords.Remember(source.user, HostOf(source.location), wish.login.password,
                              wish.login.remember);
  }
  return {source};
}

std::vector<SetSource> AskForServerCalendars(const AddingSurroundings& around) {
  DialogJob* running = nullptr;
  AccountDialog dialog(around.window, {.find =
                                           [&](const ServerAccount& account) {
                                             running->Run(JobOf(SyncJob::Kind::Discover, account));
                                           },
                                       .make =
                                           [&](const ServerAccount& account,
                                               const std::string& home, const std::string& name) {
                                             SyncJob job = JobOf(SyncJob::Kind::Make, account);
                                             job.location = home;
                                             job.name = name;
                                             running->Run(job);
                                           },
                                       .stop = [&] { running->Stop(); }});
  DialogJob job(dialog, around.settings, around.program);
  running = &job;
  SyncCalendars found;
  job.Hear({.step = [](const SyncStep&) {},
            .found =
                [&](const SyncEvent& event) {
                  if (const auto* it = std::get_if<SyncCalendars>(&event)) found = *it;
                },
            .done = [&] { dialog.ShowCalendars(found); },
            .failed = [&](const std::string& why) { dialog.ShowFault(why); },
            .login = [&](const std::string& why) { dialog.AskForLogin(why); }});
  if (dialog.exec() != QDialog::Accepted) return {};
  const ServerAccount account = dialog.Account();
  std::vector<SetSource> sources;
  for (const FoundCalendar& calendar : dialog.Chosen()) {
    sources.push_back(SourceOf(calendar, account));
    around.passwords.Remember(account.login.user, HostOf(calendar.url), account.login.password,
                              account.login.remember);
  }
  return sources;
}

}  // namespace velkor
