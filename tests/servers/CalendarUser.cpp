// tests/servers/CalendarUser.cpp: edits a mirror and has it synchronised by the program.
#include "tests/servers/CalendarUser.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <algorithm>
#include <utility>

#include "calendar/mirror/ObjectText.h"
#include "calendar/mirror/Outbox.h"
#include "calendar/mirror/ReadMirror.h"
#include "hosts/SyncMessages.h"

namespace velkor {
namespace {

constexpr int LongestSynchronisation = 300'000;

const DateWindow AllOfIt{Date::FromYmd(2026, 1, 1), Date::FromYmd(2028, 1, 1)};

Date Now() {
  return LocalTime(QDateTime::currentSecsSinceEpoch());
}

}  // namespace

std::string StateOfObject(std::string_view bytes) {
  const std::optional<ObjectAppointment> read = ReadObject(bytes);
  if (!read) return "no appointment";
  std::string state;
  for (const ItemField field : AllItemFields) state += WordsOf(field, *read) + " | ";
  return state;
}

CalendarUser::CalendarUser(HttpAccess calendar, std::string folder)
    : calendar_(std::move(calendar)),
      mirror_(std::move(folder)),
      writer_(mirror_, "Shared"),
      folder_("Shared", "shared", outlook::ItemTypeAppointment) {
  folder_.SetWriter(&writer_);
  Look();
}

void CalendarUser::Look() {
  folder_.Replace(ReadMirror(mirror_.Folder(), AllOfIt).items, AllOfIt);
}

CalendarItem CalendarUser::Find(const std::string& name) const {
  const CalendarFolder::Item item = folder_.Find(name);
  return item ? *item : CalendarItem();
}

std::string CalendarUser::Create(CalendarItem item) {
  return folder_.SaveNew(std::move(item), false, Now())->entryId;
}

void CalendarUser::Change(const std::string& name, const ItemChange& change) {
  folder_.SaveChange(name, change, Now());
}

std::unique_ptr<QProcess> CalendarUser::StartSynchronising() {
  const std::string job = LineOf(SyncJob{.kind = SyncJob::Kind::Server,
                                         .location = calendar_.url,
                                         .place = mirror_.Folder(),
                                         .user = calendar_.user,
                                         .password = calendar_.password});
  auto process = std::make_unique<QProcess>();
  process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process->start(VKR_SYNC, QStringList());
  EXPECT_TRUE(process->waitForStarted());
  process->write(QByteArray::fromStdString(job + '\n'));
  process->closeWriteChannel();
  process->waitForBytesWritten();
  return process;
}

std::string CalendarUser::EndOf(QProcess& synchronising) {
  if (!synchronising.waitForFinished(LongestSynchronisation)) {
    synchronising.kill();
    synchronising.waitForFinished();
    return "It does not end.";
  }
  const QByteArray told = synchronising.readAllStandardOutput();
  return synchronising.exitStatus() == QProcess::NormalExit && synchronising.exitCode() == 0
             ? std::string()
             : "It failed: " + told.toStdString();
}

std::string CalendarUser::Synchronise() {
  return EndOf(*StartSynchronising());
}

int CalendarUser::DamagedObjects() const {
  const std::vector<std::string> names = mirror_.Files().Names("objects");
  return static_cast<int>(
      std::ranges::count_if(names, [&](const auto& name) { return mirror_.IsDamaged(name); }));
}

std::size_t CalendarUser::Unsent() {
  Outbox outbox(mirror_);
  return outbox.Waiting().size() + outbox.Questions().size() + outbox.Refused().size();
}

std::size_t CalendarUser::Notes() {
  return Outbox(mirror_).Notes().size();
}

CalendarState CalendarUser::State() {
  CalendarState state;
  for (const ObjectKey& key : mirror_.Objects()) {
    const auto object = mirror_.Object(key.name);
    state[key.name] = object ? StateOfObject(object->bytes) : "damaged";
  }
  return state;
}

}  // namespace velkor
