// print/PrintOptions.cpp: the print options, kept in the settings store with every change.
#include "print/PrintOptions.h"

#include <utility>

#include "model/Guard.h"
#include "platform/Settings.h"
#include "print/NumberText.h"
#include "span/DisplaySpan.h"
#include "values/Text.h"

namespace velkor {
namespace {

using stored_settings::Application;
using stored_settings::False;
using stored_settings::True;
constexpr std::string_view Section = stored_settings::PrintingSection;

constexpr std::string_view LoadingFailed = "Error loading the print options ";

constexpr std::string_view BandsKey = "Bands";
constexpr std::string_view UnitsKey = "Units";
constexpr std::string_view ReprintLegendKey = "ReprintLegend";
constexpr std::string_view StartMonthKey = "StartMonth";
constexpr std::string_view EndMonthKey = "EndMonth";
constexpr std::string_view PrintTextFormatKey = "PrintTextFormat";
constexpr std::string_view PrintTextKey = "PrintText";

constexpr double TwipsPerInch = 1440;

struct LengthField {
  std::string_view key;
  /// Null for the band height, which alone is no whole number.
  std::int32_t PrintOptionSet::*twips = nullptr;
};

constexpr LengthField FieldOf(PrintLength length) {
  switch (length) {
    case PrintLength::LeftMargin:
      return {"Left Margin", &PrintOptionSet::LeftMargin};
    case PrintLength::RightMargin:
      return {"Right Margin", &PrintOptionSet::RightMargin};
    case PrintLength::TopMargin:
      return {"Top Margin", &PrintOptionSet::TopMargin};
    case PrintLength::BottomMargin:
      return {"Bottom Margin", &PrintOptionSet::BottomMargin};
    case PrintLength::LegendWidth:
      return {"Legend Width", &PrintOptionSet::LegendWidth};
    case PrintLength::BandHeight:
      break;
  }
  return {"Band Height"};
}

/// The store's name for a value of it.
std::string Named(std::string_view key, std::string_view text) {
  return "\"" + std::string(key) + "\" is \"" + std::string(text) + "\"";
}

[[noreturn]] void RefuseType(std::string_view key, std::string_view text) {
  throw Error(errors::TypeMismatch, "Type mismatch: " + Named(key, text), "PrintOptions");
}

std::int16_t OneMore(std::int16_t bands) {
  return ToWhole<std::int16_t>(bands + 1, BandsKey);
}

std::int16_t CheckedMonth(int month, std::string_view key) {
  if (month < 1 || month > MonthRows) {
    throw Error(errors::InvalidProcedureCall,
                "There is no such month: " + Named(key, std::to_string(month)), "PrintOptions");
  }
  return static_cast<std::int16_t>(month);
}

}  // namespace

PrintOptions::PrintOptions(Settings& settings, PrintedPlanner planner, std::string decimalSign)
    : settings_(settings),
      planner_(std::move(planner)),
      decimalSign_(std::move(decimalSign)),
      values_(Defaults()) {}

PrintOptionSet PrintOptions::Defaults() const {
  PrintOptionSet defaults;
  defaults.StartMonth = static_cast<std::int16_t>(planner_.firstMonth);
  defaults.EndMonth =
      static_cast<std::int16_t>(DisplaySpan{.FirstMonth = planner_.firstMonth}.LastMonthOfView());
  defaults.VisibleText = planner_.displaySubject;
  return defaults;
}

std::optional<Error> PrintOptions::Load(MessageBoxes& messages) {
  values_ = Defaults();
  auto failure = Guard(messages, LoadingFailed, [this] { ReadAll(); });
  OrderStoredMonths();
  if (!failure) {
    failure = Guard(messages, LoadingFailed, [this] {
      RestoreMonth(StartMonthKey, values_.StartMonth);
      RestoreMonth(EndMonthKey, values_.EndMonth);
    });
  }
  return failure;
}

void PrintOptions::ReadAll() {
  for (const PrintLength length :
       {PrintLength::LeftMargin, PrintLength::TopMargin, PrintLength::RightMargin,
        PrintLength::BottomMargin, PrintLength::LegendWidth}) {
    const LengthField field = FieldOf(length);
    Read(field.key, values_.*field.twips);
  }
  auto bands = MinBandNo();
  Read(BandsKey, bands);
  values_.MinBands = OneMore(bands);
  Read(FieldOf(PrintLength::BandHeight).key, values_.MinBandHeight);
  values_.Header = Stored(HeaderKey(), values_.Header);
  values_.Units = Stored(UnitsKey, values_.Units);
  Read(ReprintLegendKey, values_.ReprintLegend);
  ReadMonth(StartMonthKey, values_.StartMonth);
  ReadMonth(EndMonthKey, values_.EndMonth);
  Read(PrintTextFormatKey, values_.PrintFormat);
  Read(PrintTextKey, values_.VisibleText);
}

std::string PrintOptions::Stored(std::string_view key, std::string_view fallback) const {
  return settings_.Get(Application, Section, key, fallback);
}

/// A store answers the fallback alike for what is absent and for what equals it.
bool PrintOptions::IsStored(std::string_view key) const {
  return Stored(key, "absent") != "absent" || !Stored(key, {}).empty();
}

std::optional<double> PrintOptions::NumberOf(std::string_view text) const {
  return ParseNumber(text, decimalSign_);
}

double PrintOptions::StoredNumber(std::string_view key, std::string_view fallback) const {
  const std::string text = Stored(key, fallback);
  const auto number = NumberOf(text);
  if (!number) RefuseType(key, text);
  return *number;
}

void PrintOptions::Read(std::string_view key, std::int32_t& field) const {
  field = ToWhole<std::int32_t>(StoredNumber(key, std::to_string(field)), key);
}

void PrintOptions::Read(std::string_view key, std::int16_t& field) const {
  field = ToWhole<std::int16_t>(StoredNumber(key, std::to_string(field)), key);
}

void PrintOptions::Read(std::string_view key, float& field) const {
  field = ToSingle(StoredNumber(key, DecimalText(field)), key);
}

void PrintOptions::Read(std::string_view key, bool& field) const {
  const std::string text = Stored(key, field ? True : False);
  if (SameName(text, True) || SameName(text, False)) {
    field = SameName(text, True);
  } else if (const auto number = NumberOf(text)) {
    field = *number != 0;
  } else {
    RefuseType(key, text);
  }
}

void PrintOptions::ReadMonth(std::string_view key, std::int16_t& field) const {
  std::int16_t month = field;
  Read(key, month);
  field = CheckedMonth(month, key);
}

std::optional<int> PrintOptions::StoredCode(std::string_view key) const {
  const auto number = NumberOf(Stored(key, {}));
  // A code is one of 16 bits.
  if (!number || std::fabs(*number) > std::numeric_limits<std::int16_t>::max()) return std::nullopt;
  return ToWhole<std::int16_t>(*number, key);
}

void PrintOptions::Save(std::string_view key, std::string_view value) {
  settings_.Save(Application, Section, key, value);
}

void PrintOptions::SaveTruth(std::string_view key, bool value) {
  Save(key, value ? True : False);
}

double PrintOptions::Factor() const {
  return values_.Units == print_units::Inch ? TwipsPerInch : TwipsPerMillimetre;
}

float PrintOptions::Length(PrintLength length) const {
  const LengthField field = FieldOf(length);
  const double twips = field.twips ? double(values_.*field.twips) : double{values_.MinBandHeight};
  return static_cast<float>(twips / Factor());
}

void PrintOptions::SetLength(PrintLength length, float value) {
  const LengthField field = FieldOf(length);
  const double twips = value * Factor();
  if (field.twips) {
    values_.*field.twips = ToWhole<std::int32_t>(twips, field.key);
  } else {
    values_.MinBandHeight = ToSingle(twips, field.key);
  }
  SaveLength(length);
}

void PrintOptions::SaveLength(PrintLength length) {
  const LengthField field = FieldOf(length);
  Save(field.key,
       field.twips ? std::to_string(values_.*field.twips) : DecimalText(values_.MinBandHeight));
}

void PrintOptions::SetValues(const PrintOptionSet& values) {
  values_ = values;
  for (const PrintLength length :
       {PrintLength::LeftMargin, PrintLength::TopMargin, PrintLength::RightMargin,
        PrintLength::BottomMargin, PrintLength::LegendWidth, PrintLength::BandHeight}) {
    SaveLength(length);
  }
  SetMinBandNo(MinBandNo());
  SetHeader(values.Header);
  SetUnits(values.Units);
  SetReprintLegend(values.ReprintLegend);
  SetFilterMonths(values.StartMonth, values.EndMonth);
  SetVisibleText(values.VisibleText);
  SetPrintFormat(values.PrintFormat);
}

void PrintOptions::SetMinBandNo(std::int16_t bands) {
  values_.MinBands = OneMore(bands);
  Save(BandsKey, std::to_string(bands));
}

std::string PrintOptions::HeaderKey() const {
  return planner_.titleName + "Header";
}

void PrintOptions::SetHeader(std::string_view header) {
  values_.Header = header;
  Save(HeaderKey(), header);
}

void PrintOptions::SetUnits(std::string_view units) {
  values_.Units = units;
  Save(UnitsKey, units);
}

void PrintOptions::SetReprintLegend(bool reprint) {
  values_.ReprintLegend = reprint;
  SaveTruth(ReprintLegendKey, reprint);
}

void PrintOptions::OrderMonths() {
  const DisplaySpan year{.FirstMonth = planner_.firstMonth};
  if (year.RowOfMonth(values_.EndMonth) < year.RowOfMonth(values_.StartMonth)) {
    std::swap(values_.StartMonth, values_.EndMonth);
  }
}

void PrintOptions::OrderStoredMonths() {
  if (values_.StartMonth == values_.EndMonth % MonthRows + 1) {
    const PrintOptionSet wholeYear = Defaults();
    values_.StartMonth = wholeYear.StartMonth;
    values_.EndMonth = wholeYear.EndMonth;
  }
  OrderMonths();
}

void PrintOptions::RestoreMonth(std::string_view key, std::int16_t month) {
  if (IsStored(key)) Save(key, std::to_string(month));
}

void PrintOptions::SetFilterMonths(int start, int end) {
  const std::int16_t checkedStart = CheckedMonth(start, StartMonthKey);
  values_.EndMonth = CheckedMonth(end, EndMonthKey);
  values_.StartMonth = checkedStart;
  OrderMonths();
  Save(StartMonthKey, std::to_string(values_.StartMonth));
  Save(EndMonthKey, std::to_string(values_.EndMonth));
}

void PrintOptions::SetVisibleText(bool visible) {
  values_.VisibleText = visible;
  SaveTruth(PrintTextKey, visible);
}

void PrintOptions::SetPrintFormat(std::int16_t format) {
  values_.PrintFormat = format;
  Save(PrintTextFormatKey, std::to_string(format));
}

void PrintOptions::SetPaperSize(int code) {
  Save(PaperSizeKey, std::to_string(code));
}

void PrintOptions::SetOrientation(int code) {
  Save(OrientationKey, std::to_string(code));
}

}  // namespace velkor
