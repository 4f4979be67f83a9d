// lumsess: writing texts back into a message catalogue file.
//
// The catalogue format is read by KORResourceFile alone; this is its other
// half, for the commands that change catalogue files. A value is written the
// way KORResourceFile reads it back unchanged: literally when it can be,
// between double quotes with the escapes \" \\ \n \t when it has to be.
#ifndef LUMSESS_MSGCATWRITER_H
#define LUMSESS_MSGCATWRITER_H

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumsess {

// The value part of a "key = value" line that declares iValue: "" for an
// empty value (the line is then "key ="), the value itself when reading it
// literally gives it back, else the value quoted, with '"', '\\', newline and
// tab escaped. Quoted when the value starts or ends with a blank (space or
// tab), starts with '"', or holds a newline, a tab or a carriage return.
std::string EncodeMsgcatValue(std::string_view iValue);

// The declaration line (without line end) of iKey with iValue.
std::string MsgcatLine(std::string_view iKey, std::string_view iValue);

// The result of setting values in the content of a catalogue file.
struct MsgcatUpdate {
  std::string content;  // the new content
  int changed = 0;      // declarations whose value was replaced
  int added = 0;        // declarations appended
  std::string error;    // non-empty when the new content would not read back as meant
};

// The content iContent of the catalogue file iFileName with each (key, value)
// of iValues set: a key declared there keeps its line (the declaration that
// counts, the last one), with the text before the value as it was; a key not
// declared is appended at the end, in the order given. Every other line,
// comments, order and line ends (LF or CRLF, as the file has them) stay as
// they are; a value already declared as given leaves its line untouched. The
// new content is read back with KORResourceFile: when a key does not read as
// set, or another key changed, `error` says which and the content must not
// be written.
MsgcatUpdate UpdateMsgcat(std::string_view iContent, const char* iFileName,
                          const std::vector<std::pair<std::string, std::string>>& iValues);

// Writes iContent to iPath atomically: into a temporary file of the same
// directory, flushed to disk, then renamed over iPath (a reader sees the old
// file or the new one, never part of it). An existing file's permissions are
// kept; a new one gets 0644 less the umask. Returns "" or, on failure, a
// sentence saying what failed (iPath is then unchanged).
std::string WriteFileAtomically(const std::string& iPath, std::string_view iContent);

}  // namespace lumsess

#endif
