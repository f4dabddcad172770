// tests/categories/FirstColoursTest.cpp: the table for a calendar that holds no colours.
#include "categories/FirstColours.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "view/GridPainter.h"

namespace velkor {
namespace {

using testing::ElementsAre;

using Vector = std::array<double, 3>;
using Matrix = std::array<Vector, 3>;

/// How colours are seen with ordinary vision and without each kind of cone, over linear RGB
/// (Machado, Oliveira, Fernandes 2009, severity 1).
constexpr std::array<Matrix, 4> Visions{{
    {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
    {{{0.152286, 1.052583, -0.204868},
      {0.114503, 0.786281, 0.099216},
      {-0.003882, -0.048116, 1.051998}}},
    {{{0.367322, 0.860646, -0.227968},
      {0.280085, 0.672501, 0.047413},
      {-0.011820, 0.042940, 0.968881}}},
    {{{1.255528, -0.076749, -0.178779},
      {-0.078411, 0.930809, 0.147602},
      {0.004733, 0.691367, 0.303900}}},
}};

Vector Times(const Matrix& matrix, const Vector& v) {
  Vector result{};
  for (int i = 0; i < 3; ++i) {
    result[i] = std::clamp(matrix[i][0] * v[0] + matrix[i][1] * v[1] + matrix[i][2] * v[2], 0., 1.);
  }
  return result;
}

double Linear(int channel) {
  const double c = channel / 255.0;
  return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

/// CIE 1976 L*a*b* under D65.
Vector Lab(Colour colour, const Matrix& vision) {
  const Vector rgb =
      Times(vision, {Linear(colour.Red()), Linear(colour.Green()), Linear(colour.Blue())});
  const auto f = [](double t) { return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 16.0 / 116; };
  const double x = f((0.4124 * rgb[0] + 0.3576 * rgb[1] + 0.1805 * rgb[2]) / 0.9505);
  const double y = f(0.2126 * rgb[0] + 0.7152 * rgb[1] + 0.0722 * rgb[2]);
  const double z = f((0.0193 * rgb[0] + 0.1192 * rgb[1] + 0.9505 * rgb[2]) / 1.089);
  return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

std::vector<std::string> NamesOf(const CategoryTable& table) {
  std::vector<std::string> names;
  for (const Category& category : table.All()) names.push_back(category.name);
  return names;
}

TEST(FirstColours, MostFrequentCategoriesComeFirstAndOtherLast) {
  EXPECT_THAT(
      NamesOf(MakeFirstCategoryTable(
          {"Trip", "Leave, Trip", "", "Zoo, Leave", "Trip", " , Other", "Red|Blue, Ant"}, ", ")),
      ElementsAre("Trip", "Leave", "Ant", "Zoo", "Other"));
  EXPECT_THAT(NamesOf(MakeFirstCategoryTable({}, ", ")), ElementsAre("Other"));
}

TEST(FirstColours, HoldsAtMostFourteenNamesBesidesOther) {
  std::vector<std::string> texts;
  for (int i = 0; i < 40; ++i) {
    for (int k = 0; k <= i; ++k) texts.push_back("C" + std::to_string(i));
  }
  const CategoryTable table = MakeFirstCategoryTable(texts, ", ");
  EXPECT_EQ(table.Count(), 15);
  EXPECT_EQ(table.At(1).name, "C39");
  EXPECT_EQ(table.At(14).name, "C26");
  EXPECT_EQ(table.At(15).name, "Other");
}

TEST(FirstColours, ColoursStayApartForEveryKindOfColourVision) {
  std::vector<std::string> texts;
  for (int i = 0; i < 14; ++i) texts.push_back("C" + std::to_string(i));
  std::vector<Colour> all{grid_colours::Back, grid_colours::Weekend, grid_colours::OutOfMonth};
  const std::size_t firstOwn = all.size();
  const CategoryTable table = MakeFirstCategoryTable(texts, ", ");
  for (const Category& category : table.All()) all.push_back(category.colour);
  for (const Matrix& vision : Visions) {
    for (std::size_t i = firstOwn; i + 1 < all.size(); ++i) {
      for (std::size_t j = 0; j < all.size(); ++j) {
        if (i == j) continue;
        const Vector a = Lab(all[i], vision);
        const Vector b = Lab(all[j], vision);
        EXPECT_GE(std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]), 20) << i << " and " << j;
      }
    }
  }
}

}  // namespace
}  // namespace velkor
