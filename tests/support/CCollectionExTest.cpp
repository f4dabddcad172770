// tests/support/CCollectionExTest.cpp: keys, places and failures of the keyed collection.
#include "support/CCollectionEx.h"

#include <gmock/gmock.h>

#include "tests/support/ErrorOf.h"
namespace velkor {
namespace {

using testing::ElementsAre;
using Side = CollectionPlace::Side;

std::vector<std::string> Texts(const CCollectionEx& collection) {
  std::vector<std::string> texts;
  for (const auto& entry : CCollectionEx::NewEnum(collection)) {
    texts.push_back(std::get<std::string>(entry.item));
  }
  return texts;
}

/// The number of the error that a call fails with, which must name the collection as its source.
long FailureOf(const std::function<void()>& call) {
  const Error error = ErrorOf(call);
  EXPECT_EQ(error.Source(), "CCollectionEx");
  EXPECT_FALSE(error.Description().empty());
  return error.Number();
}

TEST(CCollectionEx, EntriesStandWhereTheyWerePut) {
  CCollectionEx collection;
  collection.Add("b", "B");
  collection.Add("d");
  collection.Add("a", "A", {Side::Before, "B"});
  collection.Add("c", "", {Side::After, 2});
  EXPECT_THAT(Texts(collection), ElementsAre("a", "b", "c", "d"));
  collection.Remove("A");
  collection.Remove(3);
  EXPECT_THAT(Texts(collection), ElementsAre("b", "c"));
  EXPECT_EQ(collection.ItemAsString("B"), "b");
  collection.Add("again", "A");
  EXPECT_EQ(collection.ItemAsString("A"), "again");
  EXPECT_EQ(collection.Count(), 3);
}

TEST(CCollectionEx, FailuresNameTheCollectionAndChangeNothing) {
  CCollectionEx collection;
  collection.Add("x", "key");
  EXPECT_EQ(FailureOf([&] { collection.Add("y", "key"); }), errors::KeyAlreadyExists);
  EXPECT_EQ(FailureOf([&] {
              collection.Add("y", "new", {Side::After, "none"});
            }),
            errors::InvalidProcedureCall);
  EXPECT_EQ(FailureOf([&] { collection.Remove("none"); }), errors::InvalidProcedureCall);
  EXPECT_EQ(FailureOf([&] { collection.ItemAsString("none"); }), errors::InvalidProcedureCall);
  for (const int position : {0, 2, -1}) {
    EXPECT_EQ(FailureOf([&] { collection.item(position); }), errors::SubscriptOutOfRange);
    EXPECT_EQ(FailureOf([&] { collection.Remove(position); }), errors::SubscriptOutOfRange);
  }
  EXPECT_THAT(Texts(collection), ElementsAre("x"));
  EXPECT_FALSE(collection.HasKey("new"));
}

TEST(CCollectionEx, NumbersAreGivenAsText) {
  CCollectionEx collection;
  collection.AddVariant(std::int32_t{-12});
  collection.AddVariant(0.1 + 0.2);
  collection.AddVariant(true);
  collection.AddVariant(std::make_shared<int>(1));
  EXPECT_EQ(collection.ItemAsString(1), "-12");
  EXPECT_EQ(collection.ItemAsString(2), "0.3");
  EXPECT_EQ(collection.ItemAsString(3), "True");
  EXPECT_EQ(FailureOf([&] { collection.ItemAsString(4); }), errors::TypeMismatch);
}

}  // namespace
}  // namespace velkor
