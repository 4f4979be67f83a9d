#include "KORLumValueList.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "KORListLumSessionFile.h"
#include "KORListLumSessionFileDef.h"
#include "KORListLumViewerBag.h"
#include "KORListLumViewerDef.h"

namespace {

// An element that keeps a register of its live instances, so that tests can
// see every copy a list makes and check that each is destroyed exactly once.
class CountedValue {
 public:
  explicit CountedValue(int iKey) : _key(iKey) { Register(); }
  CountedValue(const CountedValue& iCopy) : _key(iCopy._key) {
    Register();
    ++sCopies;
  }
  CountedValue& operator=(const CountedValue& iCopy) = default;
  virtual ~CountedValue() {
    if (Live().erase(this) != 1) ADD_FAILURE() << "element " << _key << " destroyed twice";
  }

  int operator==(const CountedValue& iOther) const {
    ++sComparisons;
    return _key == iOther._key ? 1 : 0;
  }
  int operator!=(const CountedValue& iOther) const {
    ++sComparisons;
    return _key != iOther._key ? 1 : 0;
  }

  [[nodiscard]] int Key() const { return _key; }
  void SetKey(int iKey) { _key = iKey; }

  // Instances alive now.
  static int LiveCount() { return static_cast<int>(Live().size()); }
  // Whether iValue is a live instance.
  static bool IsLive(const CountedValue* iValue) { return Live().count(iValue) == 1; }

  static inline int sCopies = 0;
  static inline int sComparisons = 0;

 private:
  static std::set<const CountedValue*>& Live() {
    static std::set<const CountedValue*> live;
    return live;
  }
  void Register() {
    if (!Live().insert(this).second) ADD_FAILURE() << "element " << _key << " built twice";
  }

  int _key;
};

using CountedList = KORLumEditableValueList<CountedValue>;

// How each element type of the tests makes values that are distinct under
// the type's own equality, and how a test reads the value back.
template <typename T>
struct Values;

template <>
struct Values<CountedValue> {
  static CountedValue Make(int iKey) { return CountedValue(iKey); }
  static std::string Key(const CountedValue& iValue) { return std::to_string(iValue.Key()); }
};

template <>
struct Values<KORLumViewerDef> {
  static KORLumViewerDef Make(int iKey) {
    const std::string key = std::to_string(iKey);
    return KORLumViewerDef(("Object" + key).c_str(), ("Viewer" + key).c_str());
  }
  static std::string Key(const KORLumViewerDef& iValue) {
    return iValue.ConvertToString().ConvertToChar();
  }
};

template <>
struct Values<KORLumViewerBag> {
  static KORLumViewerBag Make(int iKey) {
    return KORLumViewerBag(("Object" + std::to_string(iKey)).c_str(), KORListValKORUnicodeString());
  }
  static std::string Key(const KORLumViewerBag& iValue) {
    return iValue.GetObject().ConvertToChar();
  }
};

template <>
struct Values<KORLumSessionFile> {
  static KORLumSessionFile Make(int iKey) {
    return KORLumSessionFile(KORLumSessionFileType_Graph, ("/f" + std::to_string(iKey)).c_str(),
                             KORUnicodeString("Viewer3D"), KORLumGraphSessionLoadMode_Dynamic,
                             KORLumGraphSessionInstanceMode_All, 0UL);
  }
  static std::string Key(const KORLumSessionFile& iValue) {
    return iValue.GetFile().ConvertToChar();
  }
};

template <>
struct Values<KORLumSessionFileDef> {
  static KORLumSessionFileDef Make(int iKey) {
    return KORLumSessionFileDef(static_cast<_KORLumSessionFileType>(iKey),
                                ("Name" + std::to_string(iKey)).c_str(), "sfx");
  }
  static std::string Key(const KORLumSessionFileDef& iValue) {
    return iValue.GetName().ConvertToChar();
  }
};

template <typename List>
using ElementOf = std::remove_reference_t<decltype(std::declval<List&>()[1])>;

// The keys of a list's elements, in order.
template <typename List>
std::vector<std::string> Keys(const List& iList) {
  std::vector<std::string> keys;
  for (int i = 1; i <= iList.Size(); ++i) keys.push_back(Values<ElementOf<List>>::Key(iList[i]));
  return keys;
}

// The key Make(iKey) gives.
template <typename List>
std::string KeyOf(int iKey) {
  return Values<ElementOf<List>>::Key(Values<ElementOf<List>>::Make(iKey));
}

template <typename List>
std::vector<std::string> KeysOf(std::initializer_list<int> iKeys) {
  std::vector<std::string> keys;
  for (const int key : iKeys) keys.push_back(KeyOf<List>(key));
  return keys;
}

template <typename List>
List ListOf(std::initializer_list<int> iKeys) {
  List list;
  for (const int key : iKeys) list.Append(Values<ElementOf<List>>::Make(key));
  return list;
}

// Detection of the operations that only some lists have.
template <typename List, typename = void>
struct HasInsertAt : std::false_type {};
template <typename List>
struct HasInsertAt<List, std::void_t<decltype(std::declval<List&>().InsertAt(
                             1, std::declval<const ElementOf<List>&>()))>> : std::true_type {};

template <typename List, typename = void>
struct HasSizeWithFiller : std::false_type {};
template <typename List>
struct HasSizeWithFiller<List, std::void_t<decltype(std::declval<List&>().Size(
                                   1, std::declval<const ElementOf<List>*>()))>> : std::true_type {
};

template <typename List, typename = void>
struct HasRemoveValue : std::false_type {};
template <typename List>
struct HasRemoveValue<List, std::void_t<decltype(std::declval<List&>().RemoveValue(
                                std::declval<const ElementOf<List>&>()))>> : std::true_type {};

template <typename List>
constexpr bool kHasAllEditingOperations =
    HasInsertAt<List>::value&& HasSizeWithFiller<List>::value&& HasRemoveValue<List>::value;
template <typename List>
constexpr bool kHasNoEditingOperation =
    !HasInsertAt<List>::value && !HasSizeWithFiller<List>::value && !HasRemoveValue<List>::value;

}  // namespace

// Operations of every list.

template <typename List>
class KORLumValueListTest : public ::testing::Test {};

using AllLists =
    ::testing::Types<KORListValKORLumSessionFile, KORListValKORLumSessionFileDef,
                     KORListValKORLumViewerBag, KORListValKORLumViewerDef, CountedList>;
TYPED_TEST_SUITE(KORLumValueListTest, AllLists);

TYPED_TEST(KORLumValueListTest, DefaultListIsEmpty) {
  TypeParam list;
  EXPECT_EQ(list.Size(), 0);
}

TYPED_TEST(KORLumValueListTest, CapacityConstructorGivesAnEmptyList) {
  TypeParam list(5);
  EXPECT_EQ(list.Size(), 0);
}

TYPED_TEST(KORLumValueListTest, SecondConstructorArgumentIsIgnored) {
  TypeParam list(5, 7);
  EXPECT_EQ(list.Size(), 0);
  EXPECT_EQ(list == TypeParam(5), 1);
}

TYPED_TEST(KORLumValueListTest, AppendAddsAtTheEnd) {
  TypeParam list = ListOf<TypeParam>({1, 2});
  list.Append(Values<ElementOf<TypeParam>>::Make(3));
  EXPECT_EQ(Keys(list), KeysOf<TypeParam>({1, 2, 3}));
}

TYPED_TEST(KORLumValueListTest, AppendStoresACopy) {
  auto value = Values<ElementOf<TypeParam>>::Make(1);
  TypeParam list;
  list.Append(value);
  EXPECT_NE(&list[1], &value);
  EXPECT_EQ(list[1] == value, 1);
}

TYPED_TEST(KORLumValueListTest, IndexGivesTheStoredElementItself) {
  TypeParam list = ListOf<TypeParam>({1, 2});
  const TypeParam& readOnly = list;
  EXPECT_EQ(&list[2], &list[2]);
  EXPECT_EQ(&readOnly[2], &list[2]);
  list[2] = Values<ElementOf<TypeParam>>::Make(5);
  EXPECT_EQ(Keys(list), KeysOf<TypeParam>({1, 5}));
}

TYPED_TEST(KORLumValueListTest, LocateOnAnEmptyListReturnsZero) {
  const TypeParam list;
  const auto value = Values<ElementOf<TypeParam>>::Make(1);
  for (int from = 1; from <= 3; ++from) EXPECT_EQ(list.Locate(value, from), 0);
}

TYPED_TEST(KORLumValueListTest, LocateFindsTheFirstEqualElementFromTheStart) {
  const TypeParam list = ListOf<TypeParam>({1, 2, 1});
  const auto value = Values<ElementOf<TypeParam>>::Make(1);
  EXPECT_EQ(list.Locate(value, 1), 1);
  EXPECT_EQ(list.Locate(value, 2), 3);
  EXPECT_EQ(list.Locate(Values<ElementOf<TypeParam>>::Make(2), 1), 2);
}

TYPED_TEST(KORLumValueListTest, LocateOfAnAbsentValueReturnsZero) {
  const TypeParam list = ListOf<TypeParam>({1, 2});
  EXPECT_EQ(list.Locate(Values<ElementOf<TypeParam>>::Make(3), 1), 0);
}

TYPED_TEST(KORLumValueListTest, LocateBeyondTheSizeReturnsZero) {
  const TypeParam list = ListOf<TypeParam>({1, 2});
  EXPECT_EQ(list.Locate(Values<ElementOf<TypeParam>>::Make(1), 3), 0);
}

TYPED_TEST(KORLumValueListTest, RemovePositionMovesLaterElementsUp) {
  TypeParam list = ListOf<TypeParam>({1, 2, 3});
  list.RemovePosition(2);
  EXPECT_EQ(Keys(list), KeysOf<TypeParam>({1, 3}));
}

TYPED_TEST(KORLumValueListTest, RemoveAllEmptiesTheListWhateverTheMemoryHandling) {
  TypeParam released = ListOf<TypeParam>({1, 2});
  released.RemoveAll(KORCollec::ReleaseMemory);
  EXPECT_EQ(released.Size(), 0);
  TypeParam kept = ListOf<TypeParam>({1, 2});
  kept.RemoveAll(KORCollec::KeepMemory);
  EXPECT_EQ(kept.Size(), 0);
  kept.Append(Values<ElementOf<TypeParam>>::Make(3));
  EXPECT_EQ(Keys(kept), KeysOf<TypeParam>({3}));
}

TYPED_TEST(KORLumValueListTest, RemoveDuplicatesKeepsTheFirstOfEachValueInOrder) {
  TypeParam list = ListOf<TypeParam>({1, 2, 1, 3, 2});
  EXPECT_EQ(list.RemoveDuplicates(), 2);
  EXPECT_EQ(Keys(list), KeysOf<TypeParam>({1, 2, 3}));
}

TYPED_TEST(KORLumValueListTest, RemoveDuplicatesOfThreeEqualElementsLeavesOne) {
  TypeParam list = ListOf<TypeParam>({4, 4, 4});
  EXPECT_EQ(list.RemoveDuplicates(), 2);
  EXPECT_EQ(Keys(list), KeysOf<TypeParam>({4}));
}

TYPED_TEST(KORLumValueListTest, RemoveDuplicatesOfAnEmptyListReturnsZero) {
  TypeParam list;
  EXPECT_EQ(list.RemoveDuplicates(), 0);
  EXPECT_EQ(list.Size(), 0);
}

TYPED_TEST(KORLumValueListTest, CopyHoldsItsOwnCopies) {
  const TypeParam source = ListOf<TypeParam>({1, 2});
  TypeParam copy(source);
  EXPECT_EQ(Keys(copy), KeysOf<TypeParam>({1, 2}));
  EXPECT_NE(&copy[1], &source[1]);
  copy[1] = Values<ElementOf<TypeParam>>::Make(7);
  EXPECT_EQ(Keys(source), KeysOf<TypeParam>({1, 2}));
}

TYPED_TEST(KORLumValueListTest, AssignmentReplacesTheElementsByCopies) {
  const TypeParam source = ListOf<TypeParam>({3, 4});
  TypeParam target = ListOf<TypeParam>({1, 2, 5});
  // Replaces the elements above (which cppcheck takes for a dead store).
  // cppcheck-suppress redundantInitialization
  target = source;
  EXPECT_EQ(Keys(target), KeysOf<TypeParam>({3, 4}));
  EXPECT_NE(&target[1], &source[1]);
}

TYPED_TEST(KORLumValueListTest, SelfAssignmentLeavesTheListUnchanged) {
  TypeParam list = ListOf<TypeParam>({1, 2});
  const auto* first = &list[1];
  const TypeParam& alias = list;
  list = alias;
  EXPECT_EQ(Keys(list), KeysOf<TypeParam>({1, 2}));
  EXPECT_EQ(&list[1], first);
}

TYPED_TEST(KORLumValueListTest, AssigningAnEmptyListEmptiesTheTarget) {
  TypeParam target = ListOf<TypeParam>({1, 2});
  // Removes the elements above (which cppcheck takes for a dead store).
  // cppcheck-suppress redundantInitialization
  target = TypeParam();
  EXPECT_EQ(target.Size(), 0);
}

TYPED_TEST(KORLumValueListTest, TwoEmptyListsAreEqual) {
  EXPECT_EQ(TypeParam() == TypeParam(), 1);
  EXPECT_EQ(TypeParam() != TypeParam(), 0);
}

TYPED_TEST(KORLumValueListTest, ListsWithEqualElementsAreEqual) {
  EXPECT_EQ(ListOf<TypeParam>({1, 2}) == ListOf<TypeParam>({1, 2}), 1);
  EXPECT_EQ(ListOf<TypeParam>({1, 2}) != ListOf<TypeParam>({1, 2}), 0);
}

TYPED_TEST(KORLumValueListTest, ListsOfDifferentSizesAreDifferent) {
  EXPECT_EQ(ListOf<TypeParam>({1, 2}) == ListOf<TypeParam>({1}), 0);
  EXPECT_EQ(ListOf<TypeParam>({1, 2}) != ListOf<TypeParam>({1}), 1);
}

TYPED_TEST(KORLumValueListTest, ListsWithADifferentElementAreDifferent) {
  EXPECT_EQ(ListOf<TypeParam>({1, 2}) == ListOf<TypeParam>({1, 3}), 0);
  EXPECT_EQ(ListOf<TypeParam>({1, 2}) != ListOf<TypeParam>({2, 1}), 1);
}

TYPED_TEST(KORLumValueListTest, AListIsEqualToItself) {
  const TypeParam list = ListOf<TypeParam>({1, 2});
  EXPECT_EQ(list == list, 1);
  EXPECT_EQ(list != list, 0);
}

// Operations of the lists that can insert, resize with a filler and remove a
// value.

template <typename List>
class KORLumEditableValueListTest : public ::testing::Test {};

using EditableLists = ::testing::Types<KORListValKORLumSessionFile, KORListValKORLumViewerBag,
                                       KORListValKORLumViewerDef, CountedList>;
TYPED_TEST_SUITE(KORLumEditableValueListTest, EditableLists);

TYPED_TEST(KORLumEditableValueListTest, InsertAtPlacesACopyAtThePosition) {
  TypeParam list = ListOf<TypeParam>({1, 3});
  const auto value = Values<ElementOf<TypeParam>>::Make(2);
  list.InsertAt(2, value);
  EXPECT_EQ(Keys(list), KeysOf<TypeParam>({1, 2, 3}));
  EXPECT_NE(&list[2], &value);
}

TYPED_TEST(KORLumEditableValueListTest, InsertAtAfterTheLastAppends) {
  TypeParam list = ListOf<TypeParam>({1});
  list.InsertAt(2, Values<ElementOf<TypeParam>>::Make(2));
  EXPECT_EQ(Keys(list), KeysOf<TypeParam>({1, 2}));
}

TYPED_TEST(KORLumEditableValueListTest, GrowingAppendsSeparateCopiesOfTheFiller) {
  TypeParam list = ListOf<TypeParam>({1});
  const auto filler = Values<ElementOf<TypeParam>>::Make(9);
  list.Size(3, &filler);
  EXPECT_EQ(Keys(list), KeysOf<TypeParam>({1, 9, 9}));
  EXPECT_NE(&list[2], &list[3]);
  EXPECT_NE(&list[2], &filler);
}

TYPED_TEST(KORLumEditableValueListTest, ShrinkingDropsTheLastElements) {
  TypeParam list = ListOf<TypeParam>({1, 2, 3});
  list.Size(1, nullptr);
  EXPECT_EQ(Keys(list), KeysOf<TypeParam>({1}));
}

TYPED_TEST(KORLumEditableValueListTest, ResizingToTheSizeChangesNothing) {
  TypeParam list = ListOf<TypeParam>({1, 2});
  const auto* first = &list[1];
  list.Size(2, nullptr);
  EXPECT_EQ(Keys(list), KeysOf<TypeParam>({1, 2}));
  EXPECT_EQ(&list[1], first);
}

TYPED_TEST(KORLumEditableValueListTest, RemoveValueRemovesTheFirstEqualElementOnly) {
  TypeParam list = ListOf<TypeParam>({1, 2, 3, 2});
  EXPECT_EQ(list.RemoveValue(Values<ElementOf<TypeParam>>::Make(2)), 2);
  EXPECT_EQ(Keys(list), KeysOf<TypeParam>({1, 3, 2}));
}

TYPED_TEST(KORLumEditableValueListTest, RemoveValueOfAnAbsentValueReturnsZero) {
  TypeParam list = ListOf<TypeParam>({1, 2});
  EXPECT_EQ(list.RemoveValue(Values<ElementOf<TypeParam>>::Make(3)), 0);
  EXPECT_EQ(Keys(list), KeysOf<TypeParam>({1, 2}));
}

// Which list has which operations.

TEST(KORLumValueListFamily, OnlyTheDefinitionListLacksInsertAtResizeWithFillerAndRemoveValue) {
  static_assert(kHasNoEditingOperation<KORListValKORLumSessionFileDef>,
                "the session-file-definition list must not insert, resize with a filler or "
                "remove a value");
  static_assert(kHasAllEditingOperations<KORListValKORLumSessionFile>, "session-file list");
  static_assert(kHasAllEditingOperations<KORListValKORLumViewerBag>, "viewer-bag list");
  static_assert(kHasAllEditingOperations<KORListValKORLumViewerDef>, "viewer-definition list");
  // The detection itself can tell: it finds the operations on a list that has them.
  static_assert(kHasAllEditingOperations<CountedList>, "detection");
  static_assert(kHasNoEditingOperation<KORLumValueList<CountedValue>>, "detection");
}

TEST(KORLumValueListFamily, EveryListIsACollectionRoot) {
  static_assert(std::is_base_of_v<KORCollecRoot, KORListValKORLumSessionFile>);
  static_assert(std::is_base_of_v<KORCollecRoot, KORListValKORLumSessionFileDef>);
  static_assert(std::is_base_of_v<KORCollecRoot, KORListValKORLumViewerBag>);
  static_assert(std::is_base_of_v<KORCollecRoot, KORListValKORLumViewerDef>);
}

TEST(KORLumValueListOwnership, DestroyingAListThroughItsRootDestroysItsCopies) {
  const int before = CountedValue::LiveCount();
  KORCollecRoot* root = new CountedList(ListOf<CountedList>({1, 2}));
  EXPECT_EQ(CountedValue::LiveCount(), before + 2);
  delete root;
  EXPECT_EQ(CountedValue::LiveCount(), before);
}

// Partial equality of the elements.

TEST(KORListValKORLumViewerBag, BagsOfOneObjectAreDuplicatesWhateverTheirViewers) {
  KORListValKORUnicodeString v1;
  v1.Append("V1");
  KORListValKORUnicodeString v2;
  v2.Append("V2");
  KORListValKORLumViewerBag bags;
  bags.Append(KORLumViewerBag("X", v1));
  bags.Append(KORLumViewerBag("X", v2));
  EXPECT_EQ(bags.RemoveDuplicates(), 1);
  ASSERT_EQ(bags.Size(), 1);
  EXPECT_EQ(bags[1].GetViewers() == v1, true);
  KORListValKORUnicodeString v9;
  v9.Append("V9");
  EXPECT_EQ(bags.Locate(KORLumViewerBag("X", v9), 1), 1);
}

TEST(KORListValKORLumSessionFileDef, DefinitionsOfOneTypeAreDuplicatesWhateverTheirNames) {
  KORListValKORLumSessionFileDef defs;
  defs.Append(KORLumSessionFileDef(KORLumSessionFileType_Graph, "Graph", "hub"));
  defs.Append(KORLumSessionFileDef(KORLumSessionFileType_Query, "Query", "qry"));
  defs.Append(KORLumSessionFileDef(KORLumSessionFileType_Graph, "Other", "oth"));
  EXPECT_EQ(defs.Locate(KORLumSessionFileDef(KORLumSessionFileType_Graph, "Any", ""), 2), 3);
  EXPECT_EQ(defs.RemoveDuplicates(), 1);
  ASSERT_EQ(defs.Size(), 2);
  EXPECT_EQ(defs[1].GetName(), "Graph");
  EXPECT_EQ(defs[2].GetName(), "Query");
}

// Ownership of the copies: every copy a list makes is destroyed exactly once
// (the element's destructor reports a second destruction as a failure).

TEST(KORLumValueListOwnership, EveryCopyIsDestroyedWithTheList) {
  const int before = CountedValue::LiveCount();
  {
    CountedList list = ListOf<CountedList>({1, 2, 3});
    EXPECT_EQ(CountedValue::LiveCount(), before + 3);
  }
  EXPECT_EQ(CountedValue::LiveCount(), before);
}

TEST(KORLumValueListOwnership, AppendAndInsertAtMakeOneCopyEach) {
  const CountedValue value(1);
  CountedList list;
  const int copies = CountedValue::sCopies;
  list.Append(value);
  list.InsertAt(1, value);
  EXPECT_EQ(CountedValue::sCopies, copies + 2);
  EXPECT_TRUE(CountedValue::IsLive(&list[1]));
  EXPECT_TRUE(CountedValue::IsLive(&list[2]));
}

TEST(KORLumValueListOwnership, RemovalsDestroyExactlyTheRemovedCopies) {
  CountedList list = ListOf<CountedList>({1, 2, 1, 3, 2, 4});
  const int live = CountedValue::LiveCount();
  list.RemovePosition(6);
  EXPECT_EQ(CountedValue::LiveCount(), live - 1);
  EXPECT_EQ(list.RemoveDuplicates(), 2);
  EXPECT_EQ(CountedValue::LiveCount(), live - 3);
  EXPECT_EQ(list.RemoveValue(CountedValue(3)), 3);
  EXPECT_EQ(CountedValue::LiveCount(), live - 4);
  list.RemoveAll(KORCollec::KeepMemory);
  EXPECT_EQ(CountedValue::LiveCount(), live - 6);
}

TEST(KORLumValueListOwnership, ResizingCopiesTheFillerPerNewPositionAndDestroysTheTail) {
  CountedList list = ListOf<CountedList>({1});
  const CountedValue filler(9);
  const int live = CountedValue::LiveCount();
  list.Size(4, &filler);
  EXPECT_EQ(CountedValue::LiveCount(), live + 3);
  list.Size(2, nullptr);
  EXPECT_EQ(CountedValue::LiveCount(), live + 1);
  for (int i = 1; i <= list.Size(); ++i) EXPECT_TRUE(CountedValue::IsLive(&list[i]));
}

TEST(KORLumValueListOwnership, AssignmentDestroysTheOldCopiesAndMakesNewOnes) {
  const CountedList source = ListOf<CountedList>({1, 2});
  CountedList target = ListOf<CountedList>({3, 4, 5});
  const int live = CountedValue::LiveCount();
  // Each assignment destroys the elements before it (which cppcheck takes for
  // dead stores): the count of live elements tells.
  // cppcheck-suppress redundantInitialization
  target = source;
  EXPECT_EQ(CountedValue::LiveCount(), live - 1);
  // cppcheck-suppress redundantAssignment
  target = CountedList();
  EXPECT_EQ(CountedValue::LiveCount(), live - 3);
}

TEST(KORLumValueListOwnership, CopyConstructionMakesOneCopyPerElement) {
  const CountedList source = ListOf<CountedList>({1, 2, 3});
  const int copies = CountedValue::sCopies;
  const CountedList copy(source);
  EXPECT_EQ(CountedValue::sCopies, copies + 3);
}

TEST(KORLumValueListOwnership, AFullScenarioLeavesNoCopyBehind) {
  const int before = CountedValue::LiveCount();
  {
    CountedList list(2, 0);
    for (int key : {5, 1, 5, 2, 1}) list.Append(CountedValue(key));
    list.InsertAt(3, CountedValue(8));
    CountedList copy(list);
    copy.RemoveDuplicates();
    list = copy;
    const CountedValue filler(0);
    list.Size(7, &filler);
    list.Size(3, nullptr);
    (void)list.RemoveValue(CountedValue(1));
    const CountedList& alias = list;
    list = alias;
    copy.RemoveAll(KORCollec::ReleaseMemory);
    copy.Append(CountedValue(4));
    EXPECT_EQ(CountedValue::LiveCount(), before + 1 + list.Size() + copy.Size());
  }
  EXPECT_EQ(CountedValue::LiveCount(), before);
}

// Comparisons that the lists skip.

TEST(KORLumValueListComparisons, LocateFromBeyondTheSizeComparesNothing) {
  const CountedList list = ListOf<CountedList>({1, 2});
  const CountedValue value(1);
  const int comparisons = CountedValue::sComparisons;
  EXPECT_EQ(list.Locate(value, 3), 0);
  EXPECT_EQ(CountedValue::sComparisons, comparisons);
}

TEST(KORLumValueListComparisons, AListComparedWithItselfComparesNoElement) {
  const CountedList list = ListOf<CountedList>({1, 2});
  const int comparisons = CountedValue::sComparisons;
  EXPECT_EQ(list == list, 1);
  EXPECT_EQ(list != list, 0);
  EXPECT_EQ(CountedValue::sComparisons, comparisons);
}

TEST(KORLumValueListComparisons, ListsOfDifferentSizesCompareNoElement) {
  const CountedList left = ListOf<CountedList>({1, 2});
  const CountedList right = ListOf<CountedList>({1});
  const int comparisons = CountedValue::sComparisons;
  EXPECT_EQ(left == right, 0);
  EXPECT_EQ(CountedValue::sComparisons, comparisons);
}

TEST(KORLumValueListComparisons, ResizingToTheSizeDoesNotReadTheFiller) {
  CountedList list = ListOf<CountedList>({1, 2});
  const int copies = CountedValue::sCopies;
  list.Size(2, nullptr);
  EXPECT_EQ(CountedValue::sCopies, copies);
  EXPECT_EQ(list.Size(), 2);
}

// Indices reach the raw collection unchecked.

TEST(KORLumValueListDeathTest, IndexBeyondTheSizeStopsInTheRawCollection) {
  CountedList list = ListOf<CountedList>({1});
  EXPECT_DEATH((void)list[2], "Assertion");
}

TEST(KORLumValueListDeathTest, RemovePositionZeroStopsInTheRawCollection) {
  CountedList list = ListOf<CountedList>({1});
  EXPECT_DEATH(list.RemovePosition(0), "Assertion");
}
