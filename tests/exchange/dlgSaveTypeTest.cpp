// tests/exchange/dlgSaveTypeTest.cpp: when the form can be left with OK, and with what.
#include "exchange/dlgSaveType.h"

#include <gtest/gtest.h>

namespace velkor {
namespace {

TEST(dlgSaveType, OnlyDatesOfDayMonthAndYearLetAppointmentsBeExported) {
  dlgSaveType form;
  form.SelectedYear = 2026;
  form.Load();
  for (const char* text : {"29/02/2024", " 1/12/0100 ", "31/12/9999", "01/1/2026"}) {
    form.tbTo.SetText(text);
    EXPECT_TRUE(form.OKButton.Enabled()) << text;
  }
  for (const char* text :
       {"", "29/2/2026", "0/1/2026", "1/0/2026", "1/1/26", "1/1/0099", "1/1/20261", "001/1/2026",
        "1/1/2026/", "1//2026", "+1/1/2026", "12/31/2026"}) {
    form.tbTo.SetText(text);
    EXPECT_FALSE(form.OKButton.Enabled()) << text;
    form.OKButton.Click();
    EXPECT_FALSE(form.OKPressed) << text;
  }
  // Categories need no dates.
  form.rbCatsOnly.Choose();
  form.OKButton.Click();
  EXPECT_TRUE(form.OKPressed && form.CategoriesOnly);
  EXPECT_FALSE(form.DateTo.has_value());
}

}  // namespace
}  // namespace velkor
