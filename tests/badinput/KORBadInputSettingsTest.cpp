// Damaged administrator settings files (KOR_ADMIN_SETTINGS): no services at
// all when the file cannot be read, so no start-up session; otherwise every
// good setting next to the damage is still used.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

#include "BadInput.h"
#include "FreshProcess.h"
#include "KORILumServices.h"
#include "KORLumSessionFileUtilities.h"

// Checks what happens on first use: each test case needs a process of its own.
VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS();

using namespace std::string_literals;

namespace {

using Utilities = KORLumSessionFileUtilities;

constexpr const char* kStartUp = "LUMAdmin.LUM_STARTUP_SESSION = YES\n";

// Points KOR_ADMIN_SETTINGS at iPath.
void UseSettings(const std::string& iPath) { ::setenv("KOR_ADMIN_SETTINGS", iPath.c_str(), 1); }

// The administrator's value of LUM_STARTUP_SESSION, or "<unset>".
std::string StartUpValue() {
  KORILumServices_var services = CreateServices();
  if (services == KORBaseUnknown_var()) return "<no services>";
  KORUnicodeString value;
  if (services->GetAdminVariable(value, "LUM_STARTUP_SESSION", "LUMAdmin") != 0) return "<unset>";
  return std::string(value.View());
}

}  // namespace

TEST(KORBadInputSettings, MissingDirectoryGivesNoServicesAndNoStartUpSession) {
  BadInputConfiguration configuration;
  UseSettings(configuration.PathOf("no/such/directory/settings"));
  EXPECT_EQ(StartUpValue(), "<no services>");
  EXPECT_EQ(Utilities::IsStartUpSession(), 0);
}

TEST(KORBadInputSettings, DirectoryInPlaceOfTheFileGivesNoServices) {
  BadInputConfiguration configuration;
  UseSettings(configuration.MakeDirectory("settings"));
  EXPECT_EQ(StartUpValue(), "<no services>");
  EXPECT_EQ(Utilities::IsStartUpSession(), 0);
}

TEST(KORBadInputSettings, UnreadableFileGivesNoServices) {
  BadInputConfiguration configuration;
  const std::string settings = configuration.Write("settings", kStartUp);
  if (!MakeUnreadable(settings)) {
    GTEST_SKIP() << "this process reads files without read permission (superuser)";
  }
  UseSettings(settings);
  EXPECT_EQ(StartUpValue(), "<no services>");
  EXPECT_EQ(Utilities::IsStartUpSession(), 0);
}

TEST(KORBadInputSettings, EmptyFileGivesServicesWithoutTheVariable) {
  BadInputConfiguration configuration;
  UseSettings(configuration.Write("settings", ""));
  EXPECT_EQ(StartUpValue(), "<unset>");
  EXPECT_EQ(Utilities::IsStartUpSession(), 0);
}

TEST(KORBadInputSettings, BinaryGarbageLeavesTheGoodSettingUsable) {
  BadInputConfiguration configuration;
  UseSettings(configuration.Write(
      "settings", badinput::Garbage(64 * 1024) + "\n" + kStartUp + badinput::Garbage(4096)));
  EXPECT_EQ(Utilities::IsStartUpSession(), 1);
}

TEST(KORBadInputSettings, InvalidUtf8InTheValueIsNotYes) {
  BadInputConfiguration configuration;
  UseSettings(configuration.Write("settings", "LUMAdmin.LUM_STARTUP_SESSION = YES\xFF\n"));
  EXPECT_EQ(StartUpValue(), "YES\xEF\xBF\xBD");
  EXPECT_EQ(Utilities::IsStartUpSession(), 0);
}

TEST(KORBadInputSettings, InvalidUtf8ElsewhereLeavesTheGoodSettingUsable) {
  BadInputConfiguration configuration;
  UseSettings(
      configuration.Write("settings", "LUMAdmin.OTHER = \xC0\xAF\xED\xA0\x80\n"s + kStartUp));
  EXPECT_EQ(Utilities::IsStartUpSession(), 1);
}

TEST(KORBadInputSettings, NulByteSkipsItsLineOnly) {
  BadInputConfiguration configuration;
  UseSettings(configuration.Write("settings", "LUMAdmin.OTHER = a\0b\n"s + kStartUp));
  EXPECT_EQ(Utilities::IsStartUpSession(), 1);
}

TEST(KORBadInputSettings, NulByteInTheStartUpLineMeansNoStartUpSession) {
  BadInputConfiguration configuration;
  UseSettings(configuration.Write("settings", "LUMAdmin.LUM_STARTUP_SESSION = YES\0\n"s));
  EXPECT_EQ(StartUpValue(), "<unset>");
  EXPECT_EQ(Utilities::IsStartUpSession(), 0);
}

TEST(KORBadInputSettings, CrlfLineEndIsNotPartOfTheValue) {
  BadInputConfiguration configuration;
  UseSettings(configuration.Write("settings", "LUMAdmin.LUM_STARTUP_SESSION = YES\r\n"));
  EXPECT_EQ(Utilities::IsStartUpSession(), 1);
}

TEST(KORBadInputSettings, ByteOrderMarkIsNotPartOfTheFirstKey) {
  BadInputConfiguration configuration;
  UseSettings(configuration.Write("settings", "\xEF\xBB\xBF"s + kStartUp));
  EXPECT_EQ(Utilities::IsStartUpSession(), 1);
}

TEST(KORBadInputSettings, MegabyteLineIsReadAndTheNextSettingToo) {
  BadInputConfiguration configuration;
  UseSettings(configuration.Write(
      "settings", "LUMAdmin.OTHER = " + std::string(1024 * 1024, 'v') + "\n" + kStartUp));
  EXPECT_EQ(Utilities::IsStartUpSession(), 1);
}

TEST(KORBadInputSettings, FiftyMegabyteFileLoadsAndItsLastSettingIsFound) {
  BadInputConfiguration configuration;
  UseSettings(configuration.Write("settings", badinput::CommentMegabytes(50) + kStartUp));
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(Utilities::IsStartUpSession(), 1);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST(KORBadInputSettings, KeyDeclaredTwiceTakesTheLastValue) {
  BadInputConfiguration configuration;
  UseSettings(configuration.Write("settings", "LUMAdmin.LUM_STARTUP_SESSION = NO\n"s + kStartUp));
  EXPECT_EQ(Utilities::IsStartUpSession(), 1);
}

TEST(KORBadInputSettings, VariablesAndCommandsInTheValueAreNeitherExpandedNorRun) {
  BadInputConfiguration configuration;
  ::setenv("KOR_BADINPUT_YES", "YES", 1);
  const std::string marker = configuration.PathOf("ran");
  UseSettings(configuration.Write("settings",
                                  "LUMAdmin.LUM_STARTUP_SESSION = $KOR_BADINPUT_YES\n"
                                  "LUMAdmin.OTHER = $(touch " +
                                      marker + ") `touch " + marker + "` ${\n"));
  EXPECT_EQ(StartUpValue(), "$KOR_BADINPUT_YES");
  EXPECT_EQ(Utilities::IsStartUpSession(), 0);
  EXPECT_FALSE(std::filesystem::exists(marker));
}
