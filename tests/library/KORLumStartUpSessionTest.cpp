// KORLumSessionFileUtilities::IsStartUpSession: 1 only when the administrator
// "LUMAdmin" has set "LUM_STARTUP_SESSION" to exactly "YES", asked once per
// library lifetime. Every test case runs in a process of its own, so the
// flag starts unasked in each.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "FreshProcess.h"
#include "KORILumServices.h"
#include "KORLumSessionFileUtilities.h"
#include "TemporaryDirectory.h"
#include "TraceCapture.h"

// Checks what happens on first use: each test case needs a process of its own.
VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS();

namespace {

using Lines = std::vector<std::string>;
using Utilities = KORLumSessionFileUtilities;

const std::string kResultLine =
    "   KORLumSessionFileUtilities::IsStartUpSession isStartUpSession = ";

// Each test writes its own administrator settings; none is configured until
// UseSettings is called.
class KORLumStartUpSession : public ::testing::Test {
 protected:
  void SetUp() override { UnsetPlatformVariables(); }

  // Writes iContent as the administrator settings file and configures the
  // services to read it.
  void UseSettings(const std::string& iContent) {
    ::setenv("KOR_ADMIN_SETTINGS", WriteSettings(iContent).c_str(), 1);
  }

  // Rewrites the administrator settings file in place.
  std::string WriteSettings(const std::string& iContent) {
    return _directory.Write("admin.settings", iContent);
  }

  [[nodiscard]] std::string MissingFile() const { return _directory.PathOf("absent.settings"); }

 private:
  TemporaryDirectory _directory;
};

// What the services now answer for the start-up variable ("<no services>"
// when none are configured).
std::string StartUpSettingNow() {
  KORILumServices_var services = CreateServices();
  if (services == KORBaseUnknown_var()) return "<no services>";
  KORUnicodeString value;
  services->GetAdminVariable(value, "LUM_STARTUP_SESSION", "LUMAdmin");
  return std::string(value.View());
}

}  // namespace

// The value of the variable.

TEST_F(KORLumStartUpSession, YesIsAStartUpSession) {
  UseSettings("LUMAdmin.LUM_STARTUP_SESSION = YES\n");
  EXPECT_EQ(Utilities::IsStartUpSession(), 1);
}

TEST_F(KORLumStartUpSession, LowerCaseYesIsNotAStartUpSession) {
  UseSettings("LUMAdmin.LUM_STARTUP_SESSION = yes\n");
  EXPECT_EQ(Utilities::IsStartUpSession(), 0);
}

TEST_F(KORLumStartUpSession, YesFollowedByABlankIsNotAStartUpSession) {
  UseSettings("LUMAdmin.LUM_STARTUP_SESSION = \"YES \"\n");
  EXPECT_EQ(Utilities::IsStartUpSession(), 0);
}

TEST_F(KORLumStartUpSession, YesPrecededByABlankIsNotAStartUpSession) {
  UseSettings("LUMAdmin.LUM_STARTUP_SESSION = \" YES\"\n");
  EXPECT_EQ(Utilities::IsStartUpSession(), 0);
}

TEST_F(KORLumStartUpSession, OtherValueIsNotAStartUpSession) {
  UseSettings("LUMAdmin.LUM_STARTUP_SESSION = NO\n");
  EXPECT_EQ(Utilities::IsStartUpSession(), 0);
}

TEST_F(KORLumStartUpSession, EmptyValueIsNotAStartUpSession) {
  UseSettings("LUMAdmin.LUM_STARTUP_SESSION =\n");
  EXPECT_EQ(Utilities::IsStartUpSession(), 0);
}

TEST_F(KORLumStartUpSession, UnsetVariableIsNotAStartUpSession) {
  UseSettings("LUMAdmin.OTHER_VARIABLE = YES\n");
  EXPECT_EQ(Utilities::IsStartUpSession(), 0);
}

TEST_F(KORLumStartUpSession, VariableSetByAnotherAdministratorDoesNotCount) {
  UseSettings("OtherAdmin.LUM_STARTUP_SESSION = YES\n");
  EXPECT_EQ(Utilities::IsStartUpSession(), 0);
}

// Without services.

TEST_F(KORLumStartUpSession, NoServicesConfiguredIsNotAStartUpSession) {
  EXPECT_EQ(Utilities::IsStartUpSession(), 0);
}

TEST_F(KORLumStartUpSession, UnreadableSettingsFileMeansNoServices) {
  ::setenv("KOR_ADMIN_SETTINGS", MissingFile().c_str(), 1);
  EXPECT_EQ(Utilities::IsStartUpSession(), 0);
}

TEST_F(KORLumStartUpSession, NoServicesWritesOnlyTheResultLine) {
  TraceCapture capture;
  (void)Utilities::IsStartUpSession();
  EXPECT_EQ(capture.Lines(), (Lines{kResultLine + "0"}));
}

// Trace.

TEST_F(KORLumStartUpSession, StartUpSessionIsTracedAsOne) {
  UseSettings("LUMAdmin.LUM_STARTUP_SESSION = YES\n");
  TraceCapture capture;
  (void)Utilities::IsStartUpSession();
  EXPECT_EQ(capture.Lines(), (Lines{kResultLine + "1"}));
}

TEST_F(KORLumStartUpSession, EveryCallTracesTheResult) {
  UseSettings("LUMAdmin.LUM_STARTUP_SESSION = YES\n");
  TraceCapture capture;
  (void)Utilities::IsStartUpSession();
  (void)Utilities::IsStartUpSession();
  EXPECT_EQ(capture.Lines(), (Lines{kResultLine + "1", kResultLine + "1"}));
}

// The answer is asked once per library lifetime.

TEST_F(KORLumStartUpSession, StartUpSessionStaysSoWhenTheSettingChanges) {
  UseSettings("LUMAdmin.LUM_STARTUP_SESSION = YES\n");
  ASSERT_EQ(Utilities::IsStartUpSession(), 1);
  WriteSettings("LUMAdmin.LUM_STARTUP_SESSION = NO\n");
  ASSERT_EQ(StartUpSettingNow(), "NO");
  EXPECT_EQ(Utilities::IsStartUpSession(), 1);
}

TEST_F(KORLumStartUpSession, OrdinarySessionStaysSoWhenTheSettingChanges) {
  UseSettings("LUMAdmin.LUM_STARTUP_SESSION = yes\n");
  ASSERT_EQ(Utilities::IsStartUpSession(), 0);
  WriteSettings("LUMAdmin.LUM_STARTUP_SESSION = YES\n");
  ASSERT_EQ(StartUpSettingNow(), "YES");
  EXPECT_EQ(Utilities::IsStartUpSession(), 0);
}

TEST_F(KORLumStartUpSession, AnswerWithoutServicesStaysWhenServicesAppear) {
  ASSERT_EQ(Utilities::IsStartUpSession(), 0);
  UseSettings("LUMAdmin.LUM_STARTUP_SESSION = YES\n");
  ASSERT_EQ(StartUpSettingNow(), "YES");
  EXPECT_EQ(Utilities::IsStartUpSession(), 0);
}
