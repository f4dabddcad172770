// tests/print/PrintOptionsTest.cpp: what is read, what is written, and what spoils it.
#include "print/PrintOptions.h"

#include <gmock/gmock.h>

#include <map>

#include "platform/headless/MemorySettings.h"
#include "platform/headless/ScriptedMessageBoxes.h"
#include "print/NumberText.h"

namespace velkor {
namespace {

using Store = std::map<std::string, std::string>;

class PrintOptionsTest : public testing::Test {
 protected:
  void Put(const std::string& key, const std::string& value) {
    settings_.Save("Year Planner", "Printing", key, value);
  }
  Store Stored() const {
    Store store;
    for (const auto& [key, value] : settings_.Values()) store[std::get<2>(key)] = value;
    return store;
  }
  PrintOptions Options(int firstMonth = 1) {
    return {settings_, {.titleName = "Team", .firstMonth = firstMonth, .displaySubject = true}};
  }

  MemorySettings settings_;
  ScriptedMessageBoxes messages_{[](const std::string& failure) { FAIL() << failure; }};
};

TEST_F(PrintOptionsTest, EverySetterWritesItsKeyAtOnceAndLoadReadsItAgain) {
  PrintOptions options = Options();
  EXPECT_TRUE(options.VisibleText() && options.ReprintLegend());
  EXPECT_EQ(options.PaperSize(), std::nullopt);
  EXPECT_EQ(options.Orientation(), device_mode::Landscape);
  options.SetUnits("Inch");
  options.SetLength(PrintLength::LeftMargin, 1.5F);
  options.SetLength(PrintLength::RightMargin, -1);
  options.SetUnits("mm");
  options.SetLength(PrintLength::TopMargin, 2.5F);
  options.SetLength(PrintLength::BottomMargin, 15);  // 850.5 twips
  options.SetLength(PrintLength::LegendWidth, 5);    // 283.5 twips
  options.SetLength(PrintLength::BandHeight, 2.5F);
  options.SetMinBandNo(32766);
  options.SetHeader("A \"header\"");
  options.SetReprintLegend(false);
  options.SetVisibleText(false);
  options.SetPrintFormat(print_formats::Multiline);
  options.SetPaperSize(9);
  options.SetOrientation(1);
  const Store written{{"Left Margin", "2160"}, {"Right Margin", "-1440"},
                      {"Top Margin", "142"},   {"Bottom Margin", "850"},
                      {"Legend Width", "284"}, {"Band Height", "141.75"},
                      {"Bands", "32766"},      {"TeamHeader", "A \"header\""},
                      {"Units", "mm"},         {"ReprintLegend", "False"},
                      {"PrintText", "False"},  {"PrintTextFormat", "0"},
                      {"PaperSize", "9"},      {"Orientation", "1"}};
  EXPECT_EQ(Stored(), written);

  PrintOptions again = Options();
  EXPECT_FALSE(again.Load(messages_));
  EXPECT_EQ(Stored(), written);
  EXPECT_EQ(again.Values().LeftMargin, 2160);
  EXPECT_EQ(again.Values().MinBands, 32767);
  EXPECT_EQ(again.Values().MinBandHeight, 141.75F);
  EXPECT_EQ(again.Header(), options.Header());
  EXPECT_FALSE(again.ReprintLegend() || again.VisibleText());
  EXPECT_EQ(again.PaperSize(), 9);
  EXPECT_EQ(again.Orientation(), device_mode::Portrait);
  PrintOptions other(settings_, {.titleName = "Other"});
  other.Load(messages_);
  EXPECT_EQ(other.Header(), "");
}

TEST_F(PrintOptionsTest, AStoredTextThatFitsNoFieldIsToldAndTheFieldsBehindItKeepTheirDefaults) {
  for (const auto& [key, value] :
       Store{{"Left Margin", "7.5"}, {"StartMonth", "10"}, {"EndMonth", "3"}, {"PrintText", "x"}}) {
    Put(key, value);
  }
  const Store before = Stored();
  messages_.Expect("Error loading the print options 13 Type mismatch: \"PrintText\" is \"x\"");
  PrintOptions options = Options();
  const auto failure = options.Load(messages_);
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->Number(), errors::TypeMismatch);
  EXPECT_TRUE(options.VisibleText());
  // Read before the fault, and put in order for the pages, but not written.
  EXPECT_EQ(options.Values().LeftMargin, 8);
  EXPECT_EQ(options.FilterStartMonth(), 3);
  EXPECT_EQ(options.FilterEndMonth(), 10);
  EXPECT_EQ(Stored(), before);
}

TEST_F(PrintOptionsTest, WhatNoFieldHoldsChangesNothing) {
  PrintOptions options = Options();
  EXPECT_THROW(options.SetMinBandNo(32767), Error);
  EXPECT_THROW(options.SetLength(PrintLength::LeftMargin, 4e7F), Error);
  EXPECT_THROW(options.SetLength(PrintLength::BandHeight, 3e38F), Error);
  EXPECT_THROW(options.SetFilterMonths(0, 5), Error);
  EXPECT_EQ(options.MinBandNo(), 3);
  EXPECT_EQ(options.Values().LeftMargin, 1134);
  EXPECT_THAT(Stored(), testing::IsEmpty());
}

TEST(NumberText, ShowsOneDigitBehindAPointAndTiesGoAwayFromZero) {
  const std::pair<float, const char*> cases[]{
      {20, "20.0"},    {0.35F, "0.4"},          {0.25F, "0.3"},    {-0.25F, "-0.3"},
      {0.349F, "0.3"}, {9.95F, "10.0"},         {99.99F, "100.0"}, {-0.04F, "0.0"},
      {1e-30F, "0.0"}, {1e10F, "10000000000.0"}};
  for (const auto& [value, text] : cases) EXPECT_EQ(OneDecimal(value), text);
}

TEST(NumberText, ANumberIsASignDigitsAndOnePointWithBlanksAround) {
  const std::string small = "." + std::string(400, '0') + "1";
  const std::pair<std::string, double> numbers[]{
      {" 12.5 ", 12.5}, {"-.5", -0.5}, {"+5.", 5}, {"007", 7}, {small, 0}};
  for (const auto& [text, value] : numbers) EXPECT_EQ(ParseNumber(text), value) << text;
  const std::tuple<std::string, std::string, std::optional<double>> signs[]{{"1,5", ",", 1.5},
                                                                            {"1.5", ",", 1.5},
                                                                            {"-,5", ",", -0.5},
                                                                            {"1\xD9\xAB"
                                                                             "5",
                                                                             "\xD9\xAB", 1.5},
                                                                            {"1.234,5", ",", {}},
                                                                            {"1,2,3", ",", {}},
                                                                            {"1,5", ".", {}}};
  for (const auto& [text, sign, value] : signs) EXPECT_EQ(ParseNumber(text, sign), value) << text;
  for (const char* text : {"", " ", ".", "-", "- 5", "--5", "1.2.3", "1,5", "1e3", "0x1", "inf",
                           "nan", "5\t", "1 2", "\xD9\xA3"}) {
    EXPECT_FALSE(ParseNumber(text)) << text;
  }
}

}  // namespace
}  // namespace velkor
