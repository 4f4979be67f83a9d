// The vocabulary shared by the session-file values: the kind of a session
// file, the two modes of a Graph session, the option bits, and the file-name
// suffix of each kind.
//
// The enumerations have the fixed underlying type int: every int is a valid
// value of them. Values outside the listed ones are stored, compared and
// traced as given; wherever a value is turned into a text, anything that is
// not a listed value reads as None.
//
// The option set is an unsigned long in which each bit is one option. Only
// the four bits below carry meaning; the others are kept as given.
//
//   unsigned long options = KORLumSessionFileOption_Report | KORLumSessionFileOption_Query;
//   // reads "R+Q" with the default texts
#ifndef KORLumSessionFileType_h
#define KORLumSessionFileType_h

#include "KORUnicodeString.h"
#include "VX0SESS0Export.h"

// The kind of a session file.
enum _KORLumSessionFileType : int {
  KORLumSessionFileType_None = 0,   // no file
  KORLumSessionFileType_Graph = 1,  // a saved product-structure graph
  KORLumSessionFileType_Query = 2   // a saved query
};

// How a Graph session is loaded. 1 is the default that a session file puts
// in place of 0; the order is fixed.
enum _KORLumGraphSessionLoadMode : int {
  KORLumGraphSessionLoadMode_None = 0,
  KORLumGraphSessionLoadMode_Dynamic = 1,
  KORLumGraphSessionLoadMode_Static = 2
};

// Which instances a Graph session takes. 1 is the default that a session file
// puts in place of 0; the order is fixed.
enum _KORLumGraphSessionInstanceMode : int {
  KORLumGraphSessionInstanceMode_None = 0,
  KORLumGraphSessionInstanceMode_All = 1,
  KORLumGraphSessionInstanceMode_Selected = 2
};

// Option bits, combined with bitwise or. Texts are shown in this bit order.
constexpr unsigned long KORLumSessionFileOption_Report = 0x1UL;
constexpr unsigned long KORLumSessionFileOption_Modification = 0x2UL;
constexpr unsigned long KORLumSessionFileOption_Query = 0x4UL;
constexpr unsigned long KORLumSessionFileOption_CSB = 0x8UL;

// File-name suffixes of the three kinds, without a dot: "" (None), "hub"
// (Graph) and "qry" (Query). Built when the library is loaded, before client
// code can read them; they never change.
extern VX0SESS0_API const KORUnicodeString KORLumSessionFileSuffix_None;
extern VX0SESS0_API const KORUnicodeString KORLumSessionFileSuffix_Graph;
extern VX0SESS0_API const KORUnicodeString KORLumSessionFileSuffix_Query;

#endif
