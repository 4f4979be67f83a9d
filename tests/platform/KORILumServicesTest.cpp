#include "KORILumServices.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "TemporaryDirectory.h"

namespace {

// Settings file named by KOR_ADMIN_SETTINGS.
struct SettingsFixture {
  explicit SettingsFixture(const char* iContent) {
    UnsetPlatformVariables();
    path = directory.Write("admin.settings", iContent);
    setenv("KOR_ADMIN_SETTINGS", path.c_str(), 1);
  }
  // Removes the settings file with its directory: a fixture that a test
  // never reads still does its work.
  ~SettingsFixture() = default;
  SettingsFixture(const SettingsFixture&) = delete;
  SettingsFixture& operator=(const SettingsFixture&) = delete;
  TemporaryDirectory directory;
  std::string path;
};

// An interface that tells when it is deleted.
class RecordingServices final : public KORILumServices {
 public:
  explicit RecordingServices(bool& oDeleted) : _deleted(oDeleted) {}
  int GetAdminVariable(KORUnicodeString& oValue, const KORUnicodeString&,
                       const KORUnicodeString&) override {
    oValue = "recorded";
    return 0;
  }

 private:
  ~RecordingServices() override { _deleted = true; }
  bool& _deleted;
};

}  // namespace

// --- Handles ------------------------------------------------------------------------

TEST(KORILumServices, DefaultHandleIsNull) {
  const KORILumServices_var services;
  EXPECT_EQ(services.Get(), nullptr);
  EXPECT_FALSE(services);
  EXPECT_TRUE(services == KORBaseUnknown_var());
}

TEST(KORILumServices, HandlesCompareByTheObjectTheyHold) {
  bool deleted = false;
  const KORILumServices_var first(new RecordingServices(deleted));
  const KORILumServices_var copy = first;
  bool otherDeleted = false;
  const KORILumServices_var other(new RecordingServices(otherDeleted));
  EXPECT_TRUE(first == copy);
  EXPECT_FALSE(first != copy);
  EXPECT_TRUE(first != other);
  EXPECT_TRUE(first != KORBaseUnknown_var());
  const KORBaseUnknown_var base = first;
  EXPECT_TRUE(base == first);
}

TEST(KORILumServices, ArrowReachesTheInterface) {
  bool deleted = false;
  const KORILumServices_var services(new RecordingServices(deleted));
  KORUnicodeString value;
  EXPECT_EQ(services->GetAdminVariable(value, "V", "A"), 0);
  EXPECT_EQ(value, KORUnicodeString("recorded"));
}

TEST(KORILumServices, LastHandleDeletesTheInterface) {
  bool deleted = false;
  {
    KORBaseUnknown_var base;
    {
      KORILumServices_var services(new RecordingServices(deleted));
      base = services;
      const KORILumServices_var moved = std::move(services);
    }
    EXPECT_FALSE(deleted);
  }
  EXPECT_TRUE(deleted);
}

TEST(KORILumServices, AssigningANullHandleReleasesTheInterface) {
  bool deleted = false;
  KORILumServices_var services(new RecordingServices(deleted));
  services = KORILumServices_var();
  EXPECT_TRUE(deleted);
  EXPECT_TRUE(services == KORBaseUnknown_var());
}

TEST(KORILumServicesDeathTest, ArrowOnANullHandleStops) {
  const KORILumServices_var services;
  KORUnicodeString value;
  EXPECT_DEATH(services->GetAdminVariable(value, "V", "A"), "handle is not null");
}

// --- CreateServices -----------------------------------------------------------------

TEST(KORILumServices, CreateServicesGivesANullHandleWhenTheSettingsVariableIsUnset) {
  UnsetPlatformVariables();
  EXPECT_TRUE(CreateServices() == KORBaseUnknown_var());
}

TEST(KORILumServices, CreateServicesGivesANullHandleWhenTheSettingsFileIsMissing) {
  UnsetPlatformVariables();
  TemporaryDirectory directory;
  setenv("KOR_ADMIN_SETTINGS", directory.PathOf("none.settings").c_str(), 1);
  EXPECT_TRUE(CreateServices() == KORBaseUnknown_var());
}

TEST(KORILumServices, CreateServicesGivesANullHandleWhenTheSettingsFileIsADirectory) {
  UnsetPlatformVariables();
  TemporaryDirectory directory;
  setenv("KOR_ADMIN_SETTINGS", directory.MakeDirectory("admin.settings").c_str(), 1);
  EXPECT_TRUE(CreateServices() == KORBaseUnknown_var());
}

TEST(KORILumServices, CreateServicesGivesANullHandleWhenTheSettingsFileCannotBeRead) {
  SettingsFixture fixture("LUMAdmin.LUM_STARTUP_SESSION = YES\n");
  if (!MakeUnreadable(fixture.path)) {
    GTEST_SKIP() << "this process reads files without read permission (superuser)";
  }
  EXPECT_TRUE(CreateServices() == KORBaseUnknown_var());
}

TEST(KORILumServices, GetAdminVariableGivesTheValueTheAdministratorSet) {
  SettingsFixture fixture("# start-up\nLUMAdmin.LUM_STARTUP_SESSION = YES\n");
  KORILumServices_var services = CreateServices();
  ASSERT_TRUE(services != KORBaseUnknown_var());
  KORUnicodeString value;
  EXPECT_EQ(services->GetAdminVariable(value, "LUM_STARTUP_SESSION", "LUMAdmin"), 0);
  EXPECT_EQ(value, KORUnicodeString("YES"));
}

TEST(KORILumServices, GetAdminVariableGivesNonZeroAndAnEmptyValueWhenUnset) {
  SettingsFixture fixture("LUMAdmin.OTHER = x\n");
  KORILumServices_var services = CreateServices();
  ASSERT_TRUE(services != KORBaseUnknown_var());
  KORUnicodeString value("previous");
  EXPECT_NE(services->GetAdminVariable(value, "LUM_STARTUP_SESSION", "LUMAdmin"), 0);
  EXPECT_EQ(value.GetLengthInChar(), 0);
}

TEST(KORILumServices, VariableSetEmptyIsSet) {
  SettingsFixture fixture("LUMAdmin.LUM_STARTUP_SESSION =\n");
  KORILumServices_var services = CreateServices();
  ASSERT_TRUE(services != KORBaseUnknown_var());
  KORUnicodeString value("previous");
  EXPECT_EQ(services->GetAdminVariable(value, "LUM_STARTUP_SESSION", "LUMAdmin"), 0);
  EXPECT_EQ(value.GetLengthInChar(), 0);
}

TEST(KORILumServices, EachAdministratorHasItsOwnVariables) {
  SettingsFixture fixture("Other.LUM_STARTUP_SESSION = YES\nLUMAdmin.LUM_STARTUP_SESSION = no\n");
  KORILumServices_var services = CreateServices();
  ASSERT_TRUE(services != KORBaseUnknown_var());
  KORUnicodeString value;
  EXPECT_EQ(services->GetAdminVariable(value, "LUM_STARTUP_SESSION", "LUMAdmin"), 0);
  EXPECT_EQ(value, KORUnicodeString("no"));
  EXPECT_NE(services->GetAdminVariable(value, "LUM_STARTUP_SESSION", "Nobody"), 0);
}

TEST(KORILumServices, MalformedSettingsLinesAreSkippedAndTheRestIsRead) {
  SettingsFixture fixture("this line is broken\nLUMAdmin.LUM_STARTUP_SESSION = \"YES\"\n");
  KORILumServices_var services = CreateServices();
  ASSERT_TRUE(services != KORBaseUnknown_var());
  KORUnicodeString value;
  EXPECT_EQ(services->GetAdminVariable(value, "LUM_STARTUP_SESSION", "LUMAdmin"), 0);
  EXPECT_EQ(value, KORUnicodeString("YES"));
}

TEST(KORILumServices, SettingsFileIsReadAtEachCreateServices) {
  SettingsFixture fixture("LUMAdmin.LUM_STARTUP_SESSION = NO\n");
  KORILumServices_var before = CreateServices();
  fixture.directory.Write("admin.settings", "LUMAdmin.LUM_STARTUP_SESSION = YES\n");
  KORILumServices_var after = CreateServices();
  ASSERT_TRUE(before != KORBaseUnknown_var());
  ASSERT_TRUE(after != KORBaseUnknown_var());
  KORUnicodeString value;
  before->GetAdminVariable(value, "LUM_STARTUP_SESSION", "LUMAdmin");
  EXPECT_EQ(value, KORUnicodeString("NO"));
  after->GetAdminVariable(value, "LUM_STARTUP_SESSION", "LUMAdmin");
  EXPECT_EQ(value, KORUnicodeString("YES"));
}

// --- Diagnostics ----------------------------------------------------------------------

TEST(KORILumServices, SettingKeyIsTheAdministratorThenTheVariable) {
  EXPECT_EQ(GetAdminSettingKey("LUM_STARTUP_SESSION", "LUMAdmin"),
            KORUnicodeString("LUMAdmin.LUM_STARTUP_SESSION"));
}

TEST(KORILumServices, SettingsFileIsTheOneTheServicesRead) {
  SettingsFixture fixture("LUMAdmin.LUM_STARTUP_SESSION = YES\n");
  const KORResourceFile file = GetAdminSettingsFile();
  EXPECT_EQ(file.GetState(), KORResourceFile::Loaded);
  EXPECT_EQ(std::string(file.GetFileName().View()), fixture.path);
  EXPECT_EQ(file.GetLine(GetAdminSettingKey("LUM_STARTUP_SESSION", "LUMAdmin").View()), 1);
}

TEST(KORILumServices, SettingsFileIsAbsentWhenTheVariableIsUnset) {
  UnsetPlatformVariables();
  EXPECT_EQ(GetAdminSettingsFile().GetState(), KORResourceFile::Absent);
}
