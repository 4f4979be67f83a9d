// The class KORLumSessionFileUtilities itself: it only gathers static
// services, and constructing one is a programming error that stops the
// process.
#include <gtest/gtest.h>

#include <signal.h>
#include <unistd.h>

#include <iostream>
#include <type_traits>

#include "KORHUBTrace.h"
#include "KORLumSessionFileUtilities.h"

namespace {

// Writes iText to standard error with the only calls allowed in a signal
// handler.
void WriteToStandardError(const char* iText, std::size_t iLength) {
  while (iLength > 0) {
    const ssize_t written = ::write(STDERR_FILENO, iText, iLength);
    if (written <= 0) return;
    iText += written;
    iLength -= static_cast<std::size_t>(written);
  }
}

// When the assertion aborts the process, tells how many trace scopes were
// still open on the thread: "open trace scopes: <n>". A probe scope opened
// here is indented by two blanks per scope already open.
void ReportOpenScopes(int /*iSignal*/) {
  int open = 0;
  {
    KORHUBTrace probe("probe", 53, 0);
    open = probe.GetIndent() / 2;
  }
  char text[] = "open trace scopes: 0000000000\n";
  constexpr std::size_t kDigitsAt = sizeof("open trace scopes: ") - 1;
  std::size_t digits = 0;
  char reversed[10];
  do {
    reversed[digits++] = static_cast<char>('0' + open % 10);
    open /= 10;
  } while (open > 0 && digits < sizeof(reversed));
  for (std::size_t i = 0; i < digits; ++i) text[kDigitsAt + i] = reversed[digits - 1 - i];
  text[kDigitsAt + digits] = '\n';
  WriteToStandardError(text, kDigitsAt + digits + 1);
  // Returning lets abort() end the process with the signal.
}

void ReportOpenScopesOnAbort() {
  struct sigaction action {};
  action.sa_handler = ReportOpenScopes;
  sigemptyset(&action.sa_mask);
  ::sigaction(SIGABRT, &action, nullptr);
}

}  // namespace

TEST(KORLumSessionFileUtilitiesDeathTest, ConstructorStopsAtLine61) {
  EXPECT_DEATH({ KORLumSessionFileUtilities forbidden; },
               "VirtualServices/VX0SESS0\\.m/src/KORLumSessionFileUtilities:61: .*"
               "Assertion `0' failed");
}

TEST(KORLumSessionFileUtilitiesDeathTest, ConstructorStopsInsideItsOwnTraceScope) {
  // The statement runs with no scope open: one open scope at the abort is
  // the constructor's.
  EXPECT_DEATH(
      {
        ReportOpenScopesOnAbort();
        KORLumSessionFileUtilities forbidden;
      },
      "KORLumSessionFileUtilities:61: .*Assertion `0' failed.*\nopen trace scopes: 1\n");
}

TEST(KORLumSessionFileUtilitiesDeathTest, ConstructorWritesNoTraceLineBeforeStopping) {
  EXPECT_DEATH(
      {
        KORHUBTrace::SetOutput(&std::cerr);
        KORHUBTrace::SetActive(1);
        ReportOpenScopesOnAbort();
        KORLumSessionFileUtilities forbidden;
      },
      "^[^\n]*KORLumSessionFileUtilities:61: [^\n]*Assertion `0' failed[^\n]*\n"
      "open trace scopes: 1\n$");
}

TEST(KORLumSessionFileUtilities, DestructorIsVirtual) {
  EXPECT_TRUE(std::has_virtual_destructor_v<KORLumSessionFileUtilities>);
}
