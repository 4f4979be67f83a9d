// Extreme values given to a session file: every option bit set, enumeration
// values far out of range, a path of 100,000 characters. Each is stored as
// given and shows in the display line and the string form without harm.
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "BadInput.h"
#include "KORLumSessionFile.h"
#include "KORLumSessionFileUtilities.h"

namespace {

// A Graph session file on "/data/model.hub" for the viewer "V3D".
KORLumSessionFile GraphFile(int iType, int iLoadMode, int iInstanceMode, unsigned long iOption,
                            const KORUnicodeString& iFile = "/data/model.hub") {
  return KORLumSessionFile(static_cast<_KORLumSessionFileType>(iType), iFile,
                           KORUnicodeString("V3D"),
                           static_cast<_KORLumGraphSessionLoadMode>(iLoadMode),
                           static_cast<_KORLumGraphSessionInstanceMode>(iInstanceMode), iOption);
}

std::string Display(const KORLumSessionFile& iFile) { return std::string(iFile.GetNLS().View()); }
std::string Form(const KORLumSessionFile& iFile) {
  return std::string(iFile.ConvertToString().View());
}

// A path of exactly iLength characters whose base name has iBaseLength.
std::string LongPath(std::size_t iLength, std::size_t iBaseLength) {
  std::string path(iLength - iBaseLength - 1, 'd');
  path[0] = '/';
  path += '/';
  path.append(iBaseLength, 'b');
  return path;
}

}  // namespace

TEST(KORBadInputValue, AllThirtyTwoOptionBitsShowTheFourKnownOnes) {
  BadInputConfiguration configuration;
  const KORLumSessionFile file = GraphFile(1, 1, 1, 0xFFFFFFFFUL);
  EXPECT_EQ(file.GetOption(), 0xFFFFFFFFUL);
  EXPECT_EQ(Display(file), "Graph : /data/model.hub [V3D] [Dynamic] [All] [R+M+Q+C]");
  EXPECT_EQ(Form(file), "1 : /data/model.hub [V3D] [1] [1] [4294967295]");
}

TEST(KORBadInputValue, EveryOptionBitOfAnUnsignedLongIsStoredWhole) {
  BadInputConfiguration configuration;
  const KORLumSessionFile file = GraphFile(1, 1, 1, ULONG_MAX);
  EXPECT_EQ(file.GetOption(), ULONG_MAX);
  EXPECT_EQ(Display(file), "Graph : /data/model.hub [V3D] [Dynamic] [All] [R+M+Q+C]");
  EXPECT_EQ(Form(file), "1 : /data/model.hub [V3D] [1] [1] [" + std::to_string(ULONG_MAX) + "]");
}

TEST(KORBadInputValue, OnlyUnknownOptionBitsShowNoOptionText) {
  BadInputConfiguration configuration;
  const KORLumSessionFile file = GraphFile(1, 1, 1, ULONG_MAX & ~0xFUL);
  EXPECT_EQ(Display(file), "Graph : /data/model.hub [V3D] [Dynamic] [All]");
  EXPECT_EQ(Form(file),
            "1 : /data/model.hub [V3D] [1] [1] [" + std::to_string(ULONG_MAX & ~0xFUL) + "]");
}

TEST(KORBadInputValue, TypeFarOutOfRangeTakesTheGraphFormWithTheNoneText) {
  BadInputConfiguration configuration;
  for (const int type : {INT_MIN, -1, 3, INT_MAX}) {
    const KORLumSessionFile file = GraphFile(type, 1, 1, 0);
    EXPECT_EQ(file.GetType(), type);
    EXPECT_EQ(Display(file), "None : /data/model.hub [V3D] [Dynamic] [All]") << type;
    EXPECT_EQ(Form(file), std::to_string(type) + " : /data/model.hub [V3D] [1] [1] [0]");
  }
}

TEST(KORBadInputValue, LoadModeFarOutOfRangeShowsTheNoneTextAndTheNumber) {
  BadInputConfiguration configuration;
  for (const int mode : {INT_MIN, -1, 3, INT_MAX}) {
    const KORLumSessionFile file = GraphFile(1, mode, 2, 0);
    EXPECT_EQ(file.GetLoadMode(), mode);
    EXPECT_EQ(Display(file), "Graph : /data/model.hub [V3D] [None] [Selected]") << mode;
    EXPECT_EQ(Form(file), "1 : /data/model.hub [V3D] [" + std::to_string(mode) + "] [2] [0]");
  }
}

TEST(KORBadInputValue, InstanceModeFarOutOfRangeShowsTheNoneTextAndTheNumber) {
  BadInputConfiguration configuration;
  for (const int mode : {INT_MIN, -1, 3, INT_MAX}) {
    const KORLumSessionFile file = GraphFile(1, 2, mode, 0);
    EXPECT_EQ(file.GetInstanceMode(), mode);
    EXPECT_EQ(Display(file), "Graph : /data/model.hub [V3D] [Static] [None]") << mode;
    EXPECT_EQ(Form(file), "1 : /data/model.hub [V3D] [2] [" + std::to_string(mode) + "] [0]");
  }
}

TEST(KORBadInputValue, EveryValueAtItsExtremeAtOnceStillGivesBothLines) {
  BadInputConfiguration configuration;
  const KORLumSessionFile file = GraphFile(INT_MIN, INT_MAX, -1, ULONG_MAX);
  EXPECT_EQ(Display(file), "None : /data/model.hub [V3D] [None] [None] [R+M+Q+C]");
  EXPECT_EQ(Form(file), "-2147483648 : /data/model.hub [V3D] [2147483647] [-1] [" +
                            std::to_string(ULONG_MAX) + "]");
}

TEST(KORBadInputValue, HundredThousandCharacterPathWithALongBaseNameShowsTheBaseName) {
  BadInputConfiguration configuration;
  const std::string path = LongPath(100000, 99000);
  const KORLumSessionFile file = GraphFile(1, 1, 1, 0, path.c_str());
  EXPECT_EQ(std::string(file.GetNLSFile().View()), ".../" + std::string(99000, 'b'));
  EXPECT_EQ(Form(file), "1 : " + path + " [V3D] [1] [1] [0]");
}

TEST(KORBadInputValue, HundredThousandCharacterPathWithAShortBaseNameIsCutTo36Characters) {
  BadInputConfiguration configuration;
  const std::string path = LongPath(100000, 10);
  const KORLumSessionFile file = GraphFile(2, 1, 1, 0, path.c_str());
  const std::string shown(file.GetNLSFile().View());
  EXPECT_EQ(shown, path.substr(0, 22) + ".../" + std::string(10, 'b'));
  EXPECT_EQ(Display(file), "Query : " + shown);
  EXPECT_EQ(Form(file), "2 : " + path);
}

TEST(KORBadInputValue, HundredThousandCharacterPathWithoutSlashIsShownWhole) {
  BadInputConfiguration configuration;
  const std::string path(100000, 'f');
  const KORLumSessionFile file = GraphFile(2, 1, 1, 0, path.c_str());
  EXPECT_EQ(Display(file), "Query : " + path);
}
