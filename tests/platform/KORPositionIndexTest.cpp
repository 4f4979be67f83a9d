#include "KORPositionIndex.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

// A table of keys as an owner keeps it, with the index of their positions.
class Keys {
  // Whether the key at a position of the table is iKey.
  [[nodiscard]] auto IsKey(const std::string& iKey) const {
    return [this, &iKey](std::uint32_t iPosition) { return _keys[iPosition - 1] == iKey; };
  }

 public:
  // Adds iKey at the end of the table; returns its 1-based position.
  std::uint32_t Add(const std::string& iKey) { return Add(iKey, KORPositionIndex::HashOf(iKey)); }

  // Adds iKey under the hash iHash (to make keys collide on purpose).
  std::uint32_t Add(const std::string& iKey, KORPositionIndex::Hash iHash) {
    _keys.push_back(iKey);
    const auto position = static_cast<std::uint32_t>(_keys.size());
    _index.Add(iHash, position);
    return position;
  }

  [[nodiscard]] std::uint32_t Find(const std::string& iKey) const {
    return Find(iKey, KORPositionIndex::HashOf(iKey));
  }

  [[nodiscard]] std::uint32_t Find(const std::string& iKey, KORPositionIndex::Hash iHash) const {
    return _index.Find(iHash, IsKey(iKey));
  }

  // FindOrAdd with the position the key would take at the end of the table;
  // the key is appended when the index did not hold it.
  std::uint32_t FindOrAdd(const std::string& iKey) {
    const auto next = static_cast<std::uint32_t>(_keys.size() + 1);
    const std::uint32_t found = _index.FindOrAdd(KORPositionIndex::HashOf(iKey), IsKey(iKey), next);
    if (found == 0) _keys.push_back(iKey);
    return found;
  }

  KORPositionIndex& Index() { return _index; }

 private:
  std::vector<std::string> _keys;
  KORPositionIndex _index;
};

}  // namespace

TEST(KORPositionIndex, EmptyIndexFindsNothing) {
  const Keys keys;
  EXPECT_EQ(keys.Find("Part"), 0U);
}

TEST(KORPositionIndex, AddedKeyIsFoundAtItsPosition) {
  Keys keys;
  keys.Add("Part");
  keys.Add("Drawing");
  EXPECT_EQ(keys.Find("Part"), 1U);
  EXPECT_EQ(keys.Find("Drawing"), 2U);
}

TEST(KORPositionIndex, AbsentKeyGivesZero) {
  Keys keys;
  keys.Add("Part");
  EXPECT_EQ(keys.Find("Assembly"), 0U);
}

TEST(KORPositionIndex, KeysWithTheSameHashAreEachFound) {
  Keys keys;
  keys.Add("Part", 7);
  keys.Add("Drawing", 7);
  keys.Add("Assembly", 7);
  EXPECT_EQ(keys.Find("Part", 7), 1U);
  EXPECT_EQ(keys.Find("Drawing", 7), 2U);
  EXPECT_EQ(keys.Find("Assembly", 7), 3U);
  EXPECT_EQ(keys.Find("Model", 7), 0U);
}

TEST(KORPositionIndex, GrowingKeepsEveryKeyAtItsPosition) {
  Keys keys;
  for (int i = 0; i < 10000; ++i) keys.Add("key" + std::to_string(i));
  EXPECT_EQ(keys.Index().Size(), 10000U);
  for (int i = 0; i < 10000; ++i) {
    EXPECT_EQ(keys.Find("key" + std::to_string(i)), static_cast<std::uint32_t>(i + 1)) << i;
  }
  EXPECT_EQ(keys.Find("key10000"), 0U);
}

TEST(KORPositionIndex, ReservedIndexHoldsWhatItReservedFor) {
  Keys keys;
  keys.Index().Reserve(1000);
  for (int i = 0; i < 1000; ++i) keys.Add("key" + std::to_string(i));
  for (int i = 0; i < 1000; ++i) {
    EXPECT_EQ(keys.Find("key" + std::to_string(i)), static_cast<std::uint32_t>(i + 1)) << i;
  }
}

TEST(KORPositionIndex, ReserveAfterAddingKeepsTheKeys) {
  Keys keys;
  keys.Add("Part");
  keys.Add("Drawing");
  keys.Index().Reserve(5000);
  EXPECT_EQ(keys.Find("Part"), 1U);
  EXPECT_EQ(keys.Find("Drawing"), 2U);
}

TEST(KORPositionIndex, FindOrAddAddsAnAbsentKeyAndGivesZero) {
  Keys keys;
  EXPECT_EQ(keys.FindOrAdd("Part"), 0U);
  EXPECT_EQ(keys.Find("Part"), 1U);
  EXPECT_EQ(keys.Index().Size(), 1U);
}

TEST(KORPositionIndex, FindOrAddGivesThePositionOfAKeyAlreadyHeld) {
  Keys keys;
  keys.Add("Part");
  keys.Add("Drawing");
  EXPECT_EQ(keys.FindOrAdd("Drawing"), 2U);
  EXPECT_EQ(keys.Index().Size(), 2U);
}

TEST(KORPositionIndex, ClearForgetsEveryKey) {
  Keys keys;
  keys.Add("Part");
  keys.Index().Clear();
  EXPECT_EQ(keys.Index().Size(), 0U);
  EXPECT_EQ(keys.Find("Part"), 0U);
}

TEST(KORPositionIndex, HashOfDependsOnTheWholeText) {
  EXPECT_EQ(KORPositionIndex::HashOf("Part"), KORPositionIndex::HashOf(std::string("Part")));
  EXPECT_NE(KORPositionIndex::HashOf("Part"), KORPositionIndex::HashOf("Parts"));
}
