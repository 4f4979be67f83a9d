// Fuzz target: the path shortening of a session file's display line,
// KORLumSessionFile::GetNLSFile, for any file name.
//
// With L the file's length in characters and P the position of its last "/":
//   - L < 33, or no "/" after position 0: the file is shown unchanged;
//   - otherwise, with N = L - P - 1 characters of base name: for N < 32 the
//     first 32 - N characters, ".../" and the base name (exactly 36
//     characters, the head never reaching the last "/"); for N >= 32 ".../"
//     and the base name. The base name is always kept whole.
// Besides, the display line (no catalogue, no declarations: the default
// texts) is built around exactly that text, and the string form keeps the
// file whole.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "FuzzInvariants.h"
#include "KORLumSessionFile.h"
#include "KORUnicodeString.h"

namespace {

using CodePoints = std::vector<char32_t>;

CodePoints Decode(const KORUnicodeString& iString, const char* iWhat) {
  CodePoints codePoints;
  FUZZ_REQUIRE(fuzz::DecodeUtf8(iString.View(), &codePoints),
               std::string(iWhat) + " is not valid UTF-8");
  return codePoints;
}

CodePoints ExpectedShortening(const CodePoints& iFile) {
  const std::size_t length = iFile.size();
  if (length < 33) return iFile;
  std::size_t lastSlash = length;
  for (std::size_t i = length; i-- > 0;) {
    if (iFile[i] == U'/') {
      lastSlash = i;
      break;
    }
  }
  if (lastSlash == length || lastSlash == 0) return iFile;
  const std::size_t baseLength = length - lastSlash - 1;
  CodePoints shortened;
  if (baseLength < 32) {
    shortened.assign(iFile.begin(), iFile.begin() + static_cast<std::ptrdiff_t>(32 - baseLength));
  }
  for (const char32_t character : U".../") shortened.push_back(character);
  shortened.pop_back();  // the literal's terminating NUL
  shortened.insert(shortened.end(), iFile.begin() + static_cast<std::ptrdiff_t>(lastSlash + 1),
                   iFile.end());
  return shortened;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  static const fuzz::Workspace workspace;  // empty: no catalogue, no declarations
  fuzz::IsolateEnvironment(workspace);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  const KORUnicodeString file(reinterpret_cast<const char*>(iData), iSize);
  const KORLumSessionFile sessionFile(KORLumSessionFileType_Graph, file, KORUnicodeString("V3D"),
                                      KORLumGraphSessionLoadMode_Dynamic,
                                      KORLumGraphSessionInstanceMode_All, 0UL);
  FUZZ_REQUIRE(sessionFile.GetFile() == file, "the session file changed its file");

  const KORUnicodeString shown = sessionFile.GetNLSFile();
  const CodePoints shownPoints = Decode(shown, "GetNLSFile");
  FUZZ_REQUIRE(static_cast<std::size_t>(shown.GetLengthInChar()) == shownPoints.size(),
               "GetNLSFile's length is not its number of code points");
  const CodePoints filePoints = Decode(file, "the file");
  const CodePoints expected = ExpectedShortening(filePoints);
  FUZZ_REQUIRE(shownPoints == expected, "\"" + std::string(file.View()) + "\" is shown as \"" +
                                            std::string(shown.View()) + "\", expected \"" +
                                            fuzz::EncodeUtf8(expected) + "\"");
  if (shownPoints != filePoints) {
    // Shortened: 36 characters, or ".../" and a base name of 32 or more.
    const int lastSlash = file.FindLast("/");
    const int baseLength = file.GetLengthInChar() - lastSlash - 1;
    FUZZ_REQUIRE(baseLength >= 32 ? shown.GetLengthInChar() == baseLength + 4
                                  : shown.GetLengthInChar() == 36,
                 "shortened to " + std::to_string(shown.GetLengthInChar()) + " characters");
    const KORUnicodeString base = file.SubString(lastSlash + 1, baseLength);
    FUZZ_REQUIRE(shown.SubString(shown.GetLengthInChar() - baseLength, baseLength) == base,
                 "the base name was not kept whole");
  }

  // The display line and the string form around it (the templates' own
  // placeholders would be replaced inside a file that holds them).
  if (shown.View().find('%') == std::string::npos) {
    const KORUnicodeString line = sessionFile.GetNLS();
    const KORUnicodeString expectedLine =
        KORUnicodeString("Graph : ") + shown + KORUnicodeString(" [V3D] [Dynamic] [All]");
    FUZZ_REQUIRE(line == expectedLine, "display line \"" + std::string(line.View()) + "\"");
  }
  const KORUnicodeString form = sessionFile.ConvertToString();
  FUZZ_REQUIRE(form == KORUnicodeString("1 : ") + file + KORUnicodeString(" [V3D] [1] [1] [0]"),
               "string form \"" + std::string(form.View()) + "\"");
  return 0;
}
