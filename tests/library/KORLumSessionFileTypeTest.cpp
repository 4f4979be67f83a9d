#include "KORLumSessionFileType.h"

#include <gtest/gtest.h>

#include <type_traits>

TEST(KORLumSessionFileType, KindsHaveTheirFixedValues) {
  EXPECT_EQ(KORLumSessionFileType_None, 0);
  EXPECT_EQ(KORLumSessionFileType_Graph, 1);
  EXPECT_EQ(KORLumSessionFileType_Query, 2);
}

TEST(KORLumSessionFileType, LoadModesPutDynamicBeforeStatic) {
  EXPECT_EQ(KORLumGraphSessionLoadMode_None, 0);
  EXPECT_EQ(KORLumGraphSessionLoadMode_Dynamic, 1);
  EXPECT_EQ(KORLumGraphSessionLoadMode_Static, 2);
}

TEST(KORLumSessionFileType, InstanceModesPutAllBeforeSelected) {
  EXPECT_EQ(KORLumGraphSessionInstanceMode_None, 0);
  EXPECT_EQ(KORLumGraphSessionInstanceMode_All, 1);
  EXPECT_EQ(KORLumGraphSessionInstanceMode_Selected, 2);
}

TEST(KORLumSessionFileType, EnumerationsHoldAnyInt) {
  static_assert(std::is_same_v<std::underlying_type_t<_KORLumSessionFileType>, int>);
  static_assert(std::is_same_v<std::underlying_type_t<_KORLumGraphSessionLoadMode>, int>);
  static_assert(std::is_same_v<std::underlying_type_t<_KORLumGraphSessionInstanceMode>, int>);
  const auto outOfRange = static_cast<_KORLumSessionFileType>(-7);
  EXPECT_EQ(static_cast<int>(outOfRange), -7);
  const auto large = static_cast<_KORLumGraphSessionLoadMode>(1 << 30);
  EXPECT_EQ(static_cast<int>(large), 1 << 30);
}

TEST(KORLumSessionFileType, OptionBitsAreTheFourLowBits) {
  EXPECT_EQ(KORLumSessionFileOption_Report, 0x1UL);
  EXPECT_EQ(KORLumSessionFileOption_Modification, 0x2UL);
  EXPECT_EQ(KORLumSessionFileOption_Query, 0x4UL);
  EXPECT_EQ(KORLumSessionFileOption_CSB, 0x8UL);
  EXPECT_EQ(KORLumSessionFileOption_Report | KORLumSessionFileOption_Modification |
                KORLumSessionFileOption_Query | KORLumSessionFileOption_CSB,
            0xFUL);
  static_assert(std::is_same_v<decltype(KORLumSessionFileOption_CSB), const unsigned long>);
}

TEST(KORLumSessionFileType, NoneSuffixIsEmpty) {
  EXPECT_EQ(KORLumSessionFileSuffix_None.GetLengthInChar(), 0);
  EXPECT_EQ(KORLumSessionFileSuffix_None, KORUnicodeString());
}

TEST(KORLumSessionFileType, GraphSuffixIsHub) { EXPECT_EQ(KORLumSessionFileSuffix_Graph, "hub"); }

TEST(KORLumSessionFileType, QuerySuffixIsQry) { EXPECT_EQ(KORLumSessionFileSuffix_Query, "qry"); }
