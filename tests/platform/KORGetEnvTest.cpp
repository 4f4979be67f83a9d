#include "KORGetEnv.h"

#include <gtest/gtest.h>

#include <cstdlib>

TEST(KORGetEnv, GivesTheValueOfASetVariable) {
  setenv("KOR_TEST_VARIABLE", "/data/files", 1);
  EXPECT_STREQ(KORGetEnv("KOR_TEST_VARIABLE"), "/data/files");
}

TEST(KORGetEnv, GivesNullForAnUnsetVariable) {
  unsetenv("KOR_TEST_VARIABLE");
  EXPECT_EQ(KORGetEnv("KOR_TEST_VARIABLE"), nullptr);
}

TEST(KORGetEnv, GivesAnEmptyTextForAVariableSetEmpty) {
  setenv("KOR_TEST_VARIABLE", "", 1);
  ASSERT_NE(KORGetEnv("KOR_TEST_VARIABLE"), nullptr);
  EXPECT_STREQ(KORGetEnv("KOR_TEST_VARIABLE"), "");
}

TEST(KORGetEnv, GivesNullForANullName) { EXPECT_EQ(KORGetEnv(nullptr), nullptr); }
