// print/PrintOptions.h: the print options, kept in the settings store with every change.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Printer.h"
#include "print/PrintOptionSet.h"
#include "values/Error.h"

namespace velkor {

class MessageBoxes;
class Settings;

/// The lengths among the options.
enum class PrintLength {
  LeftMargin,
  RightMargin,
  TopMargin,
  BottomMargin,
  LegendWidth,
  BandHeight
};

namespace print_units {
inline constexpr std::string_view Inch = "Inch";
inline constexpr std::string_view Millimetre = "mm";
}  // namespace print_units

/// What the planner gives to its print options.
struct PrintedPlanner {
  /// The headers of different titles are stored apart.
  std::string titleName;
  /// 1 to 12.
  int firstMonth = 1;
  /// Whether subjects are printed until the user says otherwise.
  bool displaySubject = false;
};

/// The defaults until Load. A setter changes the value, writes its key, and throws the Error of a
/// store that cannot be written; the value is changed then all the same.
class PrintOptions {
 public:
  /// The settings outlive this.
  /// @param decimalSign  with which numbers may be stored and typed, beside a point
  PrintOptions(Settings& settings, PrintedPlanner planner, std::string decimalSign = ".");

  const PrintOptionSet& Values() const { return values_; }
  /// Sets all of them.
  /// @param values  the months in the planner's order, each number in the range of its setter
  void SetValues(const PrintOptionSet& values);

  /// Reads the stored options. Stored months are put in order and written as they stand then; those
  /// of a whole year, whichever month it began with, are the planner's whole year. A stored text
  /// that is no number (TypeMismatch), one beyond its field (Overflow) or a month that there is not
  /// ends the reading with a message; what was not read by then has its default, and nothing was
  /// written.
  /// @return what was told; none when all went well
  std::optional<Error> Load(MessageBoxes& messages);

  /// The number that a text of the user's or of the store is; none for any other text.
  std::optional<double> NumberOf(std::string_view text) const;

  /// In the current unit.
  float Length(PrintLength length) const;
  /// Takes it in the current unit; margins and legend width are kept as whole twips. Throws an
  /// overflow Error, with nothing changed, where the field cannot hold it.
  void SetLength(PrintLength length, float value);

  /// The number of bands as the user entered it, one less than the layout begins with.
  std::int16_t MinBandNo() const { return static_cast<std::int16_t>(values_.MinBands - 1); }
  /// Throws an overflow Error, with nothing changed, where one more is beyond 16 bits.
  void SetMinBandNo(std::int16_t bands);

  const std::string& Header() const { return values_.Header; }
  void SetHeader(std::string_view header);

  const std::string& Units() const { return values_.Units; }
  /// One of print_units; whatever is not exactly "Inch" counts as millimetres.
  void SetUnits(std::string_view units);

  bool ReprintLegend() const { return values_.ReprintLegend; }
  void SetReprintLegend(bool reprint);

  std::int16_t FilterStartMonth() const { return values_.StartMonth; }
  std::int16_t FilterEndMonth() const { return values_.EndMonth; }
  /// Each 1 to 12, an Error for another number with nothing changed. They change places where the
  /// end comes before the start in the planner's year.
  void SetFilterMonths(int start, int end);

  bool VisibleText() const { return values_.VisibleText; }
  void SetVisibleText(bool visible);

  /// One of print_formats.
  std::int16_t PrintFormat() const { return values_.PrintFormat; }
  void SetPrintFormat(std::int16_t format);

  /// The printer's settings as they were stored last, codes of the device mode. Where there is no
  /// number the paper is none and the orientation landscape.
  std::optional<int> PaperSize() const { return StoredCode(PaperSizeKey); }
  int Orientation() const {
    return StoredCode(OrientationKey).value_or(int{device_mode::Landscape});
  }
  void SetPaperSize(int code);
  void SetOrientation(int code);

 private:
  static constexpr std::string_view PaperSizeKey = "PaperSize";
  static constexpr std::string_view OrientationKey = "Orientation";

  PrintOptionSet Defaults() const;
  void ReadAll();
  std::string Stored(std::string_view key, std::string_view fallback) const;
  /// These read a field over what it is where nothing is stored.
  void Read(std::string_view key, std::int32_t& field) const;
  void Read(std::string_view key, std::int16_t& field) const;
  void Read(std::string_view key, float& field) const;
  void Read(std::string_view key, bool& field) const;
  void ReadMonth(std::string_view key, std::int16_t& field) const;
  bool IsStored(std::string_view key) const;
  double StoredNumber(std::string_view key, std::string_view fallback) const;
  std::optional<int> StoredCode(std::string_view key) const;
  void Save(std::string_view key, std::string_view value);
  void SaveLength(PrintLength length);
  void SaveTruth(std::string_view key, bool value);

  double Factor() const;
  std::string HeaderKey() const;
  void OrderMonths();
  void OrderStoredMonths();
  /// Writes a month that was chosen once.
  void RestoreMonth(std::string_view key, std::int16_t month);

  Settings& settings_;
  PrintedPlanner planner_;
  std::string decimalSign_;
  PrintOptionSet values_;
};

}  // namespace velkor
