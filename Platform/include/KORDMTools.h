// KORDMTools: path tools of the platform.
//
// ExpandPath puts the values of environment variables into a path, the way a
// careful user expects and nothing more: it never runs a command and never
// matches file names against patterns.
//
//   // With HOME=/home/u and DATA=/srv/data:
//   KORDMTools::ExpandPath("~/sessions");             // "/home/u/sessions"
//   KORDMTools::ExpandPath("${DATA}/files/$USER_X");  // "/srv/data/files/" (USER_X unset)
//   KORDMTools::ExpandPath("cost$$");                 // "cost$"
//   KORDMTools::ExpandPath("$(date)/*.hub");          // "$(date)/*.hub", unchanged
#ifndef KORDMTools_h
#define KORDMTools_h

#include "KORListValKORUnicodeString.h"
#include "KORPlatformExport.h"
#include "KORUnicodeString.h"

class KORPLATFORM_API KORDMTools {
 public:
  KORDMTools() = delete;

  // iPath with, scanning once from left to right:
  //   - $NAME and ${NAME} (NAME: letters, digits and '_', as long as
  //     possible) replaced by the variable's value, or by nothing when it is
  //     unset;
  //   - $$ replaced by $;
  //   - a leading ~, alone or before '/', replaced by the value of HOME (left
  //     as it is when HOME is unset; ~user is not expanded);
  //   - everything else kept as it is: a '$' followed by anything but a name,
  //     '$' or '{' ("$(cmd)", "$/", a final '$'), back quotes, '*', '?', and
  //     every "${...}" that is not exactly ${NAME} ("${}", "${NAME:-x}",
  //     "${A B}"), which is copied unchanged up to its first '}' — or to the
  //     end of the path when it has none.
  // Values put in are not scanned again.
  static KORUnicodeString ExpandPath(const KORUnicodeString& iPath);
  // The same expansion; oUnset is set to the names of the variables the path
  // uses that are unset, each once, in the order they appear (HOME for a
  // leading ~ when HOME is unset).
  static KORUnicodeString ExpandPath(const KORUnicodeString& iPath,
                                     KORListValKORUnicodeString& oUnset);
};

#endif
