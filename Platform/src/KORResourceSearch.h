// Where the platform looks for its resource files (internal to KORPlatform).
//
// Message catalogues and declaration resources are searched in the
// directories of a ':'-separated path variable, in order. When the variable
// is unset, or names no directory at all, the installed directory
// <data>/VX0SESS0/<kind> is searched instead, where <data> is found next to
// the KORPlatform library itself (so that an installed tree can be moved),
// else the data directory chosen when the platform was configured.
#ifndef KORResourceSearch_h
#define KORResourceSearch_h

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "KORListValKORUnicodeString.h"
#include "KORResourceFile.h"

namespace kor_detail {

// The installed data directory of the product (".../share/VX0SESS0").
const std::string& InstalledDataDirectory();

// The directories to search for files of one kind: those of the variable
// iVariable (empty entries skipped), else <InstalledDataDirectory>/iKind.
std::vector<std::string> SearchDirectories(const char* iVariable, const char* iKind);

// iDirectory + "/" + iRelative (no doubled '/').
std::string JoinPath(std::string_view iDirectory, std::string_view iRelative);

// The outcome of a search for one file through the directories.
struct FoundFile {
  std::string path;                      // the file used; empty when none could be read
  KORResourceFile resource;              // its content (Absent when none)
  std::vector<KORResourceFile> skipped;  // files there but unreadable, each with its problem
  // The search stopped at a file that could not be read for a reason that is
  // not the file's (too many open files, out of memory, a failed read): the
  // outcome holds for now only, and must not be kept.
  bool transient = false;
};

// The first readable iRelative in iDirectories. A file that exists but cannot
// be read counts as absent: the next directory is tried, and it is noted. A
// file that fails for a reason that is not its own ends the search there,
// without a file and marked transient: a later directory's file would stand
// in for the one that takes precedence.
// iLoad reads one candidate file (KORResourceFile::Load when not given).
FoundFile FindFirstReadable(const std::vector<std::string>& iDirectories,
                            std::string_view iRelative,
                            const std::function<KORResourceFile(const std::string&)>& iLoad = {});

// Copies strings into a platform list.
KORListValKORUnicodeString ToList(const std::vector<std::string>& iValues);

// Appends the problems of each file ("file: reason") to ioProblems.
void AppendProblems(const std::vector<KORResourceFile>& iFiles,
                    KORListValKORUnicodeString& ioProblems);

}  // namespace kor_detail

#endif
