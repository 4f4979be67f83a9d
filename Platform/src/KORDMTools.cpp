#include "KORDMTools.h"

#include <string>
#include <string_view>

#include "KORGetEnv.h"
#include "KORListValKORUnicodeString.h"

namespace {

bool IsNameChar(char iChar) {
  return (iChar >= 'A' && iChar <= 'Z') || (iChar >= 'a' && iChar <= 'z') ||
         (iChar >= '0' && iChar <= '9') || iChar == '_';
}

// Appends the value of the variable iName; records its name in oUnset (once,
// when given) when it is unset.
void AppendVariable(std::string& ioText, std::string_view iName,
                    KORListValKORUnicodeString* oUnset) {
  if (const char* value = KORGetEnv(std::string(iName).c_str())) {
    ioText.append(value);
  } else if (oUnset != nullptr) {
    const KORUnicodeString name(iName.data(), iName.size());
    if (oUnset->Locate(name) == 0) oUnset->Append(name);
  }
}

KORUnicodeString Expand(const KORUnicodeString& iPath, KORListValKORUnicodeString* oUnset) {
  const std::string_view path = iPath.View();
  std::string expanded;
  expanded.reserve(path.size());
  std::size_t position = 0;

  if (!path.empty() && path[0] == '~' && (path.size() == 1 || path[1] == '/')) {
    if (const char* home = KORGetEnv("HOME")) {
      expanded.append(home);
    } else {
      expanded += '~';
      if (oUnset != nullptr && oUnset->Locate("HOME") == 0) oUnset->Append("HOME");
    }
    position = 1;
  }

  while (position < path.size()) {
    const std::size_t dollar = path.find('$', position);
    if (dollar == std::string_view::npos) break;
    expanded.append(path.substr(position, dollar - position));
    const std::size_t next = dollar + 1;
    if (next < path.size() && path[next] == '$') {
      expanded += '$';
      position = next + 1;
    } else if (next < path.size() && path[next] == '{') {
      std::size_t end = next + 1;
      while (end < path.size() && IsNameChar(path[end])) ++end;
      if (end > next + 1 && end < path.size() && path[end] == '}') {
        AppendVariable(expanded, path.substr(next + 1, end - next - 1), oUnset);
        position = end + 1;
      } else {
        // Not a plain ${NAME}: the whole construct stays as written.
        const std::size_t close = path.find('}', next);
        const std::size_t stop = close == std::string_view::npos ? path.size() : close + 1;
        expanded.append(path.substr(dollar, stop - dollar));
        position = stop;
      }
    } else {
      std::size_t end = next;
      while (end < path.size() && IsNameChar(path[end])) ++end;
      if (end > next) {
        AppendVariable(expanded, path.substr(next, end - next), oUnset);
      } else {
        expanded += '$';
      }
      position = end;
    }
  }
  if (position < path.size()) expanded.append(path.substr(position));
  return KORUnicodeString(expanded.data(), expanded.size());
}

}  // namespace

KORUnicodeString KORDMTools::ExpandPath(const KORUnicodeString& iPath) {
  return Expand(iPath, nullptr);
}

KORUnicodeString KORDMTools::ExpandPath(const KORUnicodeString& iPath,
                                        KORListValKORUnicodeString& oUnset) {
  oUnset.RemoveAll();
  return Expand(iPath, &oUnset);
}
