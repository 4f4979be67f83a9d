// Where the platform looks for catalogues and declarations when the path
// variables are unset: the installed share/VX0SESS0, found beside the
// KORPlatform library when the installed tree has one, else the data
// directory chosen when the build was configured.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "KORLumPool.h"
#include "KORMsgCatalog.h"
#include "ListText.h"
#include "TemporaryDirectory.h"

namespace {

// Runs iProgram (a path without blanks) and gives what it printed.
std::string RunAndRead(const std::string& iProgram) {
  std::string output;
  // The probe is a program of this build, run as an installed client would.
  FILE* pipe = ::popen(iProgram.c_str(), "r");  // NOLINT(cert-env33-c)
  if (pipe == nullptr) return "<cannot run " + iProgram + ">";
  char buffer[4096];
  for (std::size_t count; (count = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
    output.append(buffer, count);
  }
  const int status = ::pclose(pipe);
  if (status != 0) output += "<exit status " + std::to_string(status) + ">";
  return output;
}

}  // namespace

TEST(KORInstalledDefaults, CataloguesAreSearchedInTheConfiguredDataDirectoryWhenThePathIsUnset) {
  // In the build tree no share/VX0SESS0 lies beside the library.
  UnsetPlatformVariables();
  EXPECT_EQ(ListText(KORMsgCatalog::GetSearchPath()),
            "[" KOR_TEST_CONFIGURED_DATADIR "/msgcatalog]");
}

TEST(KORInstalledDefaults, DeclarationsAreSearchedInTheConfiguredDataDirectoryWhenThePathIsUnset) {
  UnsetPlatformVariables();
  EXPECT_EQ(ListText(KORLumPool::GetSearchPath()), "[" KOR_TEST_CONFIGURED_DATADIR "/dcls]");
}

TEST(KORInstalledDefaults, PathVariablesWithoutAnyDirectoryMeanTheInstalledDirectories) {
  UnsetPlatformVariables();
  setenv("KOR_MSGCATALOG_PATH", "", 1);
  setenv("KOR_DCLS_PATH", "::", 1);
  EXPECT_EQ(ListText(KORMsgCatalog::GetSearchPath()),
            "[" KOR_TEST_CONFIGURED_DATADIR "/msgcatalog]");
  EXPECT_EQ(ListText(KORLumPool::GetSearchPath()), "[" KOR_TEST_CONFIGURED_DATADIR "/dcls]");
}

TEST(KORInstalledDefaults, MovedInstallationUsesTheShareDirectoryBesideItsLibrary) {
  namespace fs = std::filesystem;
  TemporaryDirectory tree;
  const std::string libdir = tree.MakeDirectory(KOR_TEST_INSTALL_LIBDIR);
  fs::copy_file(KOR_TEST_PLATFORM_LIBRARY, libdir + "/" KOR_TEST_PLATFORM_SONAME);
  const std::string share = tree.PathOf(KOR_TEST_INSTALL_DATADIR "/VX0SESS0");
  tree.Write(KOR_TEST_INSTALL_DATADIR "/VX0SESS0/msgcatalog/Probe.msgcat",
             "Probe.Msg = installed text\n");
  tree.Write(KOR_TEST_INSTALL_DATADIR "/VX0SESS0/dcls/Probe.dcls", "Probe.Key = installed value\n");

  UnsetPlatformVariables();
  // The copy in the temporary tree is loaded instead of the build's own.
  setenv("LD_LIBRARY_PATH", libdir.c_str(), 1);
  EXPECT_EQ(RunAndRead(KOR_TEST_PROBE), "msgcatalog=" + share + "/msgcatalog\n" + "dcls=" + share +
                                            "/dcls\n" + "message=installed text\n" +
                                            "declaration=0 0 installed value\n");
}
