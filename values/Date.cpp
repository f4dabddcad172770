// values/Date.cpp: conversion between day counts and calendar fields.
#include "values/Date.h"

#include <chrono>
#include <cmath>

namespace velkor {
namespace {

constexpr std::chrono::sys_days Epoch{std::chrono::year{1899} / 12 / 30};

constexpr std::int64_t DayOf(int year, int month, int day) {
  // Whole years out of the month first, so that any month rolls over.
  const int months = year * 12 + month - 1;
  const int wholeYear = (months >= 0 ? months : months - 11) / 12;
  const auto monthOfYear = static_cast<unsigned>(months - wholeYear * 12 + 1);
  const std::chrono::sys_days first{std::chrono::year{wholeYear} / std::chrono::month{monthOfYear} /
                                    1};
  return (first - Epoch).count() + day - 1;
}

constexpr std::int64_t FirstSecond = DayOf(100, 1, 1) * SecondsPerDay;
constexpr std::int64_t LastSecond = DayOf(10000, 1, 1) * SecondsPerDay - 1;

constexpr auto FirstWholeDay = static_cast<double>(DayOf(100, 1, 2));
constexpr auto LastWholeDay = static_cast<double>(DayOf(9999, 12, 31));

constexpr std::int64_t FloorDay(std::int64_t seconds) {
  return (seconds >= 0 ? seconds : seconds - (SecondsPerDay - 1)) / SecondsPerDay;
}

}  // namespace

Date Date::FromSeconds(std::int64_t seconds) {
  const std::int64_t day = FloorDay(seconds);
  const double fraction = static_cast<double>(seconds - day * SecondsPerDay) / SecondsPerDay;
  const auto whole = static_cast<double>(day);
  return Date(day >= 0 ? whole + fraction : whole - fraction);
}

Date Date::FromFields(const DateFields& fields) {
  const std::int64_t time = fields.hour * 3600 + fields.minute * 60 + fields.second;
  return FromSeconds(DayOf(fields.year, fields.month, fields.day) * SecondsPerDay + time);
}

bool Date::IsValid() const {
  // Days away from both ends the seconds need no look.
  if (days_ > FirstWholeDay && days_ < LastWholeDay) return true;
  // The coarse bound keeps Seconds() inside its integer; it also turns away what is no number.
  if (!(std::fabs(days_) < 4'000'000)) return false;
  const std::int64_t seconds = Seconds();
  return seconds >= FirstSecond && seconds <= LastSecond;
}

std::int64_t Date::Seconds() const {
  const auto whole = static_cast<std::int64_t>(days_);
  const double time =
      std::fabs(days_ - static_cast<double>(whole)) * static_cast<double>(SecondsPerDay);
  // What std::llround gives, without a call: every date of a year comes through here.
  const auto seconds = static_cast<std::int64_t>(time);
  const bool roundUp = time - static_cast<double>(seconds) >= 0.5;
  return whole * SecondsPerDay + seconds + static_cast<std::int64_t>(roundUp);
}

std::int64_t Date::DayNumber() const {
  const auto whole = static_cast<std::int64_t>(days_);
  const double time =
      std::fabs(days_ - static_cast<double>(whole)) * static_cast<double>(SecondsPerDay);
  const bool roundsToNextDay = time >= static_cast<double>(SecondsPerDay) - 0.5;
  return whole + static_cast<std::int64_t>(roundsToNextDay);
}

DateFields Date::Fields() const {
  const std::int64_t seconds = Seconds();
  const std::int64_t day = FloorDay(seconds);
  const std::chrono::year_month_day ymd{Epoch + std::chrono::days{day}};
  const int time = static_cast<int>(seconds - day * SecondsPerDay);
  return {static_cast<int>(ymd.year()),
          static_cast<int>(static_cast<unsigned>(ymd.month())),
          static_cast<int>(static_cast<unsigned>(ymd.day())),
          time / 3600,
          time / 60 % 60,
          time % 60};
}

int Date::Weekday() const {
  // Day 0, 30 December 1899, was a Saturday.
  const std::int64_t rest = (DayNumber() + 6) % 7;
  return static_cast<int>(rest < 0 ? rest + 7 : rest) + 1;
}

Date Date::Midnight() const {
  return Date(static_cast<double>(DayNumber()));
}

Date Date::AddDays(int days) const {
  return FromSeconds(Seconds() + days * SecondsPerDay);
}

}  // namespace velkor
