// hosts/SyncMessages.cpp: jobs and events of vkrSync to JSON and back.
#include "hosts/SyncMessages.h"

#include <array>
#include <nlohmann/json.hpp>

namespace velkor {
namespace {

using Json = nlohmann::ordered_json;

struct KindNames {
  SyncJob::Kind kind;
  const char* job;
  /// Of the job sync; null for others.
  const char* of;
};

constexpr std::array<KindNames, 4> Kinds{{
    {SyncJob::Kind::Address, "sync", "address"},
    {SyncJob::Kind::Server, "sync", "server"},
    {SyncJob::Kind::Discover, "discover", nullptr},
    {SyncJob::Kind::Make, "make", nullptr},
}};

std::string Dump(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string Text(const Json& json, const char* field) {
  return json.value(field, std::string());
}

SyncJob::Kind KindIn(const Json& json) {
  for (const KindNames& names : Kinds) {
    const bool isKind = names.of == nullptr || Text(json, "kind") == names.of;
    if (Text(json, "job") == names.job && isKind) return names.kind;
  }
  throw Error(errors::InvalidProcedureCall, "There is no such job.");
}

Json JsonOf(const SyncStep& progress) {
  return {{"event", "progress"}, {"done", progress.done}, {"of", progress.of}};
}

Json JsonOf(const SyncChanged&) {
  return {{"event", "changed"}};
}

Json JsonOf(const CertificateFault& fault) {
  return {{"event", "certificate"},   {"host", fault.host},     {"sha256", fault.sha256},
          {"subject", fault.subject}, {"issuer", fault.issuer}, {"from", fault.from},
          {"until", fault.until},     {"reason", fault.reason}, {"changed", fault.changed}};
}

Json JsonOf(const SyncLogin& login) {
  return {{"event", "login"}, {"host", login.host}, {"user", login.user}};
}

Json JsonOf(const SyncCalendars& found) {
  Json calendars = Json::array();
  for (const FoundCalendar& each : found.calendars) {
    calendars.push_back({{"url", each.url},
                         {"name", each.name},
                         {"colour", each.colour},
                         {"readOnly", each.readOnly}});
  }
  return {{"event", "calendars"}, {"home", found.home}, {"calendars", calendars}};
}

Json JsonOf(const SyncContent& content) {
  return {{"event", "content"}, {"name", content.name}, {"events", content.events}};
}

Json JsonOf(const SyncOutcome& outcome) {
  Json json{{"event", outcome.done ? "done" : "failed"}};
  if (!outcome.done) {
    json["offline"] = outcome.offline;
    json["reason"] = outcome.reason;
  }
  if (outcome.retryAfter) json["retryAfter"] = outcome.retryAfter->count();
  if (outcome.interval) json["interval"] = outcome.interval->count();
  return json;
}

CertificateFault CertificateIn(const Json& json) {
  return {Text(json, "host"),   Text(json, "sha256"),        Text(json, "subject"),
          Text(json, "issuer"), Text(json, "from"),          Text(json, "until"),
          Text(json, "reason"), json.value("changed", false)};
}

SyncCalendars CalendarsIn(const Json& json) {
  SyncCalendars found{Text(json, "home"), {}};
  for (const Json& each : json.at("calendars")) {
    found.calendars.push_back({Text(each, "url"), Text(each, "name"), Text(each, "colour"),
                               each.value("readOnly", false)});
  }
  return found;
}

SyncOutcome OutcomeIn(const Json& json, bool done) {
  const auto seconds = [&](const char* field) -> std::optional<std::chrono::seconds> {
    if (!json.contains(field)) return std::nullopt;
    return std::chrono::seconds(json.at(field).get<std::int64_t>());
  };
  return {done, json.value("offline", false), Text(json, "reason"), seconds("retryAfter"),
          seconds("interval")};
}

std::optional<SyncEvent> EventIn(const Json& json) {
  const std::string event = Text(json, "event");
  if (event == "progress") return SyncStep{json.at("done"), json.at("of")};
  if (event == "changed") return SyncChanged{};
  if (event == "certificate") return CertificateIn(json);
  if (event == "login") return SyncLogin{Text(json, "host"), Text(json, "user")};
  if (event == "calendars") return CalendarsIn(json);
  if (event == "content") return SyncContent{Text(json, "name"), json.at("events")};
  if (event == "done" || event == "failed") return OutcomeIn(json, event == "done");
  return std::nullopt;
}

}  // namespace

std::string LineOf(const SyncJob& job) {
  const KindNames& names = Kinds.at(static_cast<std::size_t>(job.kind));
  Json json{{"job", names.job}};
  if (names.of != nullptr) json["kind"] = names.of;
  json.update({{"location", job.location},
               {"place", job.place},
               {"user", job.user},
               {"password", job.password},
               {"trusted", job.trusted},
               {"name", job.name},
               {"colour", job.colour}});
  return Dump(json);
}

std::string LineOf(const SyncEvent& event) {
  return Dump(std::visit([](const auto& told) { return JsonOf(told); }, event));
}

SyncJob ParseSyncJob(std::string_view line) {
  try {
    const Json json = Json::parse(line);
    return {KindIn(json),           Text(json, "location"),
            Text(json, "place"),    Text(json, "user"),
            Text(json, "password"), json.value("trusted", std::map<std::string, std::string>()),
            Text(json, "name"),     Text(json, "colour")};
  } catch (const Json::exception& error) {
    throw Error(errors::InvalidProcedureCall, std::string("This is no job: ") + error.what());
  }
}

std::optional<SyncEvent> ParseSyncEvent(std::string_view line) {
  try {
    return EventIn(Json::parse(line));
  } catch (const Json::exception&) {
    return std::nullopt;
  }
}

}  // namespace velkor
