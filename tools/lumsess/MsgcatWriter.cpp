#include "MsgcatWriter.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <map>

#include "KORResourceFile.h"

namespace lumsess {

namespace {

bool IsBlank(char iChar) { return iChar == ' ' || iChar == '\t'; }

bool NeedsQuotes(std::string_view iValue) {
  if (iValue.empty()) return false;
  if (IsBlank(iValue.front()) || IsBlank(iValue.back()) || iValue.front() == '"') return true;
  return iValue.find_first_of("\n\t\r") != std::string_view::npos;
}

// One line of a file, without its line end.
struct Line {
  std::string text;
  bool crlf = false;
};

std::vector<Line> SplitLines(std::string_view iContent, bool& oEndsWithNewline) {
  std::vector<Line> lines;
  oEndsWithNewline = iContent.empty() || iContent.back() == '\n';
  std::size_t start = 0;
  while (start < iContent.size()) {
    std::size_t end = iContent.find('\n', start);
    const bool last = end == std::string_view::npos;
    if (last) end = iContent.size();
    Line line;
    line.text = std::string(iContent.substr(start, end - start));
    if (!last && !line.text.empty() && line.text.back() == '\r') {
      line.text.pop_back();
      line.crlf = true;
    }
    lines.push_back(std::move(line));
    start = end + 1;
  }
  return lines;
}

// The text of a declaration line up to its value: the key, the '=' and the
// blanks after it, as written.
std::string Prefix(const std::string& iLine) {
  std::size_t end = iLine.find('=');
  if (end == std::string::npos) return iLine;  // not reached: the line declares a key
  ++end;
  while (end < iLine.size() && IsBlank(iLine[end])) ++end;
  return iLine.substr(0, end);
}

std::string ErrnoText() { return std::strerror(errno); }

}  // namespace

std::string EncodeMsgcatValue(std::string_view iValue) {
  if (!NeedsQuotes(iValue)) return std::string(iValue);
  std::string encoded = "\"";
  for (const char c : iValue) {
    switch (c) {
      case '"':
        encoded += "\\\"";
        break;
      case '\\':
        encoded += "\\\\";
        break;
      case '\n':
        encoded += "\\n";
        break;
      case '\t':
        encoded += "\\t";
        break;
      default:
        encoded += c;
        break;
    }
  }
  encoded += '"';
  return encoded;
}

std::string MsgcatLine(std::string_view iKey, std::string_view iValue) {
  std::string line(iKey);
  line += " =";
  if (!iValue.empty()) line += ' ' + EncodeMsgcatValue(iValue);
  return line;
}

MsgcatUpdate UpdateMsgcat(std::string_view iContent, const char* iFileName,
                          const std::vector<std::pair<std::string, std::string>>& iValues) {
  MsgcatUpdate update;
  const KORResourceFile before = KORResourceFile::Parse(iContent, iFileName);
  bool endsWithNewline = true;
  std::vector<Line> lines = SplitLines(iContent, endsWithNewline);
  // New lines end as the file's first line does (LF for an empty file).
  const bool crlf = !lines.empty() && lines.front().crlf;

  // The value each key must read as afterwards (the last one given wins),
  // the keys in the order they were first given.
  std::map<std::string, std::string, std::less<>> wanted;
  std::vector<std::string> order;
  for (const auto& [key, value] : iValues) {
    if (wanted.count(key) == 0) order.push_back(key);
    wanted[key] = value;
  }
  std::vector<std::string> appended;
  for (const std::string& key : order) {
    const std::string& value = wanted[key];
    const KORUnicodeString* current = before.Find(key);
    if (current == nullptr) {
      appended.push_back(key);
      continue;
    }
    if (current->View() == value) continue;  // the line stays as it is
    Line& declaration = lines[static_cast<std::size_t>(before.GetLine(key) - 1)];
    std::string prefix = Prefix(declaration.text);
    const std::string encoded = EncodeMsgcatValue(value);
    if (encoded.empty()) {
      while (!prefix.empty() && IsBlank(prefix.back())) prefix.pop_back();
    } else if (!prefix.empty() && prefix.back() == '=') {
      prefix += ' ';
    }
    declaration.text = prefix + encoded;
  }

  std::string content;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    content += lines[i].text;
    const bool lastLine = i + 1 == lines.size();
    if (!lastLine || endsWithNewline) content += lines[i].crlf ? "\r\n" : "\n";
  }
  if (!appended.empty() && !content.empty() && content.back() != '\n')
    content += crlf ? "\r\n" : "\n";
  for (const std::string& key : appended) {
    content += MsgcatLine(key, wanted[key]);
    content += crlf ? "\r\n" : "\n";
  }

  // Read it back: every key set reads as given, every other key as before.
  const KORResourceFile after = KORResourceFile::Parse(content, iFileName);
  for (const auto& [key, value] : wanted) {
    const KORUnicodeString* read = after.Find(key);
    if (read == nullptr || read->View() != value) {
      update.error = "the value of " + key + " would not read back as imported";
      return update;
    }
    const KORUnicodeString* was = before.Find(key);
    if (was == nullptr) {
      ++update.added;
    } else if (was->View() != value) {
      ++update.changed;
    }
  }
  const KORListValKORUnicodeString keys = before.GetKeys();
  for (int i = 1; i <= keys.Size(); ++i) {
    const std::string_view key = keys[i].View();
    if (wanted.count(key) != 0) continue;
    const KORUnicodeString* read = after.Find(key);
    if (read == nullptr || *read != *before.Find(key)) {
      update.error = "the value of " + std::string(key) + " would change";
      return update;
    }
  }
  update.content = std::move(content);
  return update;
}

std::string WriteFileAtomically(const std::string& iPath, std::string_view iContent) {
  const std::size_t slash = iPath.rfind('/');
  const std::string directory = slash == std::string::npos ? "." : iPath.substr(0, slash + 1);
  const std::string name = slash == std::string::npos ? iPath : iPath.substr(slash + 1);
  std::string temporary = directory + (directory.back() == '/' ? "" : "/") + "." + name + ".XXXXXX";
  const int descriptor = ::mkstemp(temporary.data());
  if (descriptor < 0) return "cannot create a temporary file in " + directory + ": " + ErrnoText();

  struct stat existing {};
  mode_t mode = 0644;
  if (::stat(iPath.c_str(), &existing) == 0) {
    mode = existing.st_mode & 07777;
  } else {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    mode &= ~mask;
  }
  std::string failure;
  const char* data = iContent.data();
  std::size_t left = iContent.size();
  while (failure.empty() && left > 0) {
    const ssize_t written = ::write(descriptor, data, left);
    if (written < 0) {
      if (errno == EINTR) continue;
      failure = "cannot write " + temporary + ": " + ErrnoText();
    } else {
      data += written;
      left -= static_cast<std::size_t>(written);
    }
  }
  if (failure.empty() && ::fchmod(descriptor, mode) != 0)
    failure = "cannot set the permissions of " + temporary + ": " + ErrnoText();
  if (failure.empty() && ::fsync(descriptor) != 0)
    failure = "cannot write " + temporary + ": " + ErrnoText();
  if (::close(descriptor) != 0 && failure.empty())
    failure = "cannot write " + temporary + ": " + ErrnoText();
  if (failure.empty() && ::rename(temporary.c_str(), iPath.c_str()) != 0)
    failure = "cannot rename " + temporary + " to " + iPath + ": " + ErrnoText();
  if (!failure.empty()) ::unlink(temporary.c_str());
  return failure;
}

}  // namespace lumsess
