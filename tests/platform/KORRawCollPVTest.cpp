#include "KORRawCollPV.h"

#include <gtest/gtest.h>

#include <vector>

#include "AllocationCounter.h"

namespace {

std::vector<void*> Slots(const KORRawCollPV& iCollection) {
  std::vector<void*> slots;
  for (int i = 1; i <= iCollection.Size(); ++i) slots.push_back(iCollection[i]);
  return slots;
}

// Pointees for the slots; the collection never looks at them.
struct Pointees {
  int a = 1;
  int b = 2;
  int c = 3;
  int d = 4;
};

}  // namespace

TEST(KORRawCollPV, DefaultConstructedCollectionIsEmpty) {
  const KORRawCollPV collection;
  EXPECT_EQ(collection.Size(), 0);
}

TEST(KORRawCollPV, InitialCapacityGivesAnEmptyCollection) {
  const KORRawCollPV collection(16);
  EXPECT_EQ(collection.Size(), 0);
}

TEST(KORRawCollPV, NegativeInitialCapacityGivesAnEmptyCollection) {
  const KORRawCollPV collection(-3);
  EXPECT_EQ(collection.Size(), 0);
}

TEST(KORRawCollPV, InitialCapacityIsReservedForAppends) {
  Pointees p;
  KORRawCollPV collection(16);
  AllocationCounter counter;
  for (int i = 0; i < 16; ++i) collection.Append(&p.a);
  EXPECT_EQ(counter.Count(), 0);
  EXPECT_EQ(collection.Size(), 16);
}

TEST(KORRawCollPV, AppendAddsSlotsAtTheEnd) {
  Pointees p;
  KORRawCollPV collection;
  collection.Append(&p.a);
  collection.Append(nullptr);
  collection.Append(&p.b);
  EXPECT_EQ(collection.Size(), 3);
  EXPECT_EQ(Slots(collection), (std::vector<void*>{&p.a, nullptr, &p.b}));
}

TEST(KORRawCollPV, InsertAtOnePlacesTheSlotFirst) {
  Pointees p;
  KORRawCollPV collection;
  collection.Append(&p.b);
  collection.InsertAt(1, &p.a);
  EXPECT_EQ(Slots(collection), (std::vector<void*>{&p.a, &p.b}));
}

TEST(KORRawCollPV, InsertInTheMiddleMovesLaterSlotsDown) {
  Pointees p;
  KORRawCollPV collection;
  collection.Append(&p.a);
  collection.Append(&p.c);
  collection.InsertAt(2, &p.b);
  EXPECT_EQ(Slots(collection), (std::vector<void*>{&p.a, &p.b, &p.c}));
}

TEST(KORRawCollPV, InsertAtSizePlusOneAppends) {
  Pointees p;
  KORRawCollPV collection;
  collection.InsertAt(1, &p.a);
  collection.InsertAt(2, &p.b);
  EXPECT_EQ(Slots(collection), (std::vector<void*>{&p.a, &p.b}));
}

TEST(KORRawCollPV, MutableIndexGivesAnAssignableSlot) {
  Pointees p;
  KORRawCollPV collection;
  collection.Append(&p.a);
  collection.Append(&p.b);
  collection[2] = &p.c;
  EXPECT_EQ(collection[2], &p.c);
  void*& slot = collection[1];
  slot = nullptr;
  EXPECT_EQ(collection[1], nullptr);
}

TEST(KORRawCollPV, ConstIndexGivesTheSlotsPointer) {
  Pointees p;
  KORRawCollPV collection;
  collection.Append(&p.a);
  collection.Append(&p.b);
  const KORRawCollPV& constCollection = collection;
  EXPECT_EQ(constCollection[1], &p.a);
  EXPECT_EQ(constCollection[2], &p.b);
}

TEST(KORRawCollPV, GrowingSizeAddsNullSlotsAtTheEnd) {
  Pointees p;
  KORRawCollPV collection;
  collection.Append(&p.a);
  collection.Size(3);
  EXPECT_EQ(Slots(collection), (std::vector<void*>{&p.a, nullptr, nullptr}));
}

TEST(KORRawCollPV, ShrinkingSizeDropsSlotsWithoutTouchingThePointees) {
  Pointees p;
  KORRawCollPV collection;
  collection.Append(&p.a);
  collection.Append(&p.b);
  collection.Append(&p.c);
  collection.Size(1);
  EXPECT_EQ(Slots(collection), (std::vector<void*>{&p.a}));
  EXPECT_EQ(p.a, 1);
  EXPECT_EQ(p.b, 2);
  EXPECT_EQ(p.c, 3);
}

TEST(KORRawCollPV, GrowingAfterShrinkingGivesNullSlots) {
  Pointees p;
  KORRawCollPV collection;
  collection.Append(&p.a);
  collection.Append(&p.b);
  collection.Size(1);
  collection.Size(2);
  EXPECT_EQ(Slots(collection), (std::vector<void*>{&p.a, nullptr}));
}

TEST(KORRawCollPV, SizeZeroEmptiesTheCollection) {
  Pointees p;
  KORRawCollPV collection;
  collection.Append(&p.a);
  collection.Size(0);
  EXPECT_EQ(collection.Size(), 0);
}

TEST(KORRawCollPV, RemovePositionMovesLaterSlotsUp) {
  Pointees p;
  KORRawCollPV collection;
  collection.Append(&p.a);
  collection.Append(&p.b);
  collection.Append(&p.c);
  collection.RemovePosition(2);
  EXPECT_EQ(Slots(collection), (std::vector<void*>{&p.a, &p.c}));
  collection.RemovePosition(2);
  EXPECT_EQ(Slots(collection), (std::vector<void*>{&p.a}));
  collection.RemovePosition(1);
  EXPECT_EQ(collection.Size(), 0);
  EXPECT_EQ(p.b, 2);
}

TEST(KORRawCollPV, RemoveAllReleasingMemoryEmptiesTheCollection) {
  Pointees p;
  KORRawCollPV collection;
  collection.Append(&p.a);
  collection.Append(&p.b);
  collection.RemoveAll(KORCollec::ReleaseMemory);
  EXPECT_EQ(collection.Size(), 0);
  EXPECT_EQ(p.a, 1);
}

TEST(KORRawCollPV, RemoveAllReleasingMemoryGivesUpTheStorage) {
  Pointees p;
  KORRawCollPV collection(8);
  collection.Append(&p.a);
  collection.RemoveAll(KORCollec::ReleaseMemory);
  AllocationCounter counter;
  collection.Append(&p.a);
  EXPECT_GT(counter.Count(), 0);
}

TEST(KORRawCollPV, RemoveAllReleasesMemoryByDefault) {
  Pointees p;
  KORRawCollPV collection(8);
  collection.Append(&p.a);
  collection.RemoveAll();
  EXPECT_EQ(collection.Size(), 0);
  AllocationCounter counter;
  collection.Append(&p.a);
  EXPECT_GT(counter.Count(), 0);
}

TEST(KORRawCollPV, RemoveAllKeepingMemoryEmptiesTheCollection) {
  Pointees p;
  KORRawCollPV collection;
  collection.Append(&p.a);
  collection.Append(&p.b);
  collection.RemoveAll(KORCollec::KeepMemory);
  EXPECT_EQ(collection.Size(), 0);
  EXPECT_EQ(p.b, 2);
}

TEST(KORRawCollPV, RemoveAllKeepingMemoryKeepsTheCapacity) {
  Pointees p;
  KORRawCollPV collection;
  for (int i = 0; i < 32; ++i) collection.Append(&p.a);
  collection.RemoveAll(KORCollec::KeepMemory);
  AllocationCounter counter;
  for (int i = 0; i < 32; ++i) collection.Append(&p.b);
  EXPECT_EQ(counter.Count(), 0);
  EXPECT_EQ(collection.Size(), 32);
  EXPECT_EQ(collection[32], &p.b);
}

TEST(KORRawCollPV, MemoryHandlingValuesAreZeroAndOne) {
  EXPECT_EQ(static_cast<int>(KORCollec::ReleaseMemory), 0);
  EXPECT_EQ(static_cast<int>(KORCollec::KeepMemory), 1);
}

TEST(KORRawCollPV, CopyIsEqualAndIndependent) {
  Pointees p;
  KORRawCollPV original;
  original.Append(&p.a);
  KORRawCollPV copy(original);
  copy[1] = &p.b;
  copy.Append(&p.c);
  EXPECT_EQ(Slots(original), (std::vector<void*>{&p.a}));
  EXPECT_EQ(Slots(copy), (std::vector<void*>{&p.b, &p.c}));
}

TEST(KORRawCollPV, DeletingThroughTheRootDestroysTheCollection) {
  Pointees p;
  KORCollecRoot* root = new KORRawCollPV(4);
  static_cast<KORRawCollPV*>(root)->Append(&p.a);
  delete root;  // the sanitizer build reports a leak if the slots are not freed
  EXPECT_EQ(p.a, 1);
}

// ---------------------------------------------------------------------------
// Positions out of range and negative counts stop the process.

namespace {
const char kIndexCheck[] =
    "Platform/src/KORRawCollPV.cpp:[0-9]+: .*Assertion `iIndex >= 1 && iIndex <= Size\\(\\)' "
    "failed";
const char kInsertCheck[] =
    "Platform/src/KORRawCollPV.cpp:[0-9]+: .*Assertion `iIndex >= 1 && iIndex <= Size\\(\\) "
    "\\+ 1' failed";
const char kCountCheck[] = "Platform/src/KORRawCollPV.cpp:[0-9]+: .*Assertion `iCount >= 0' failed";

KORRawCollPV TwoSlots() {
  static int values[2] = {1, 2};
  KORRawCollPV collection;
  collection.Append(&values[0]);
  collection.Append(&values[1]);
  return collection;
}
}  // namespace

TEST(KORRawCollPVDeathTest, MutableIndexZeroStopsTheProcess) {
  KORRawCollPV collection = TwoSlots();
  EXPECT_DEATH(collection[0] = nullptr, kIndexCheck);
}

TEST(KORRawCollPVDeathTest, MutableIndexPastTheSizeStopsTheProcess) {
  KORRawCollPV collection = TwoSlots();
  EXPECT_DEATH(collection[3] = nullptr, kIndexCheck);
}

TEST(KORRawCollPVDeathTest, ConstIndexZeroStopsTheProcess) {
  const KORRawCollPV collection = TwoSlots();
  EXPECT_DEATH((void)collection[0], kIndexCheck);
}

TEST(KORRawCollPVDeathTest, ConstIndexPastTheSizeStopsTheProcess) {
  const KORRawCollPV collection = TwoSlots();
  EXPECT_DEATH((void)collection[3], kIndexCheck);
}

TEST(KORRawCollPVDeathTest, NegativeIndexStopsTheProcess) {
  const KORRawCollPV collection = TwoSlots();
  EXPECT_DEATH((void)collection[-1], kIndexCheck);
}

TEST(KORRawCollPVDeathTest, InsertAtZeroStopsTheProcess) {
  KORRawCollPV collection = TwoSlots();
  EXPECT_DEATH(collection.InsertAt(0, nullptr), kInsertCheck);
}

TEST(KORRawCollPVDeathTest, InsertPastSizePlusOneStopsTheProcess) {
  KORRawCollPV collection = TwoSlots();
  EXPECT_DEATH(collection.InsertAt(4, nullptr), kInsertCheck);
}

TEST(KORRawCollPVDeathTest, RemovePositionZeroStopsTheProcess) {
  KORRawCollPV collection = TwoSlots();
  EXPECT_DEATH(collection.RemovePosition(0), kIndexCheck);
}

TEST(KORRawCollPVDeathTest, RemovePositionPastTheSizeStopsTheProcess) {
  KORRawCollPV collection = TwoSlots();
  EXPECT_DEATH(collection.RemovePosition(3), kIndexCheck);
}

TEST(KORRawCollPVDeathTest, RemovePositionInAnEmptyCollectionStopsTheProcess) {
  KORRawCollPV collection;
  EXPECT_DEATH(collection.RemovePosition(1), kIndexCheck);
}

TEST(KORRawCollPVDeathTest, NegativeSizeStopsTheProcess) {
  KORRawCollPV collection = TwoSlots();
  EXPECT_DEATH(collection.Size(-1), kCountCheck);
}
