// Test helper: the text of a "KORBRIX" declaration file holding a
// METHOD_LIST table, built from a table of entries. Header-only, so that the
// benchmarks can use it too.
//
//   const std::string text = MethodListFile()
//                                .Entry("HUB", "Tools", "Viewer3D", "Viewer3D", "Part")
//                                .Entry("Both", nullptr, "Print", "Print", "Part")  // no ROLE
//                                .Text();
//
// Entry n (1, 2, ...) declares "KORBRIX.METHOD_LIST(n).WHERE", ".ROLE",
// ".COMMAND", ".TAG" and ".KORAB"; a null value leaves that key undeclared,
// an empty one declares it empty. Values are written quoted, so that blanks
// around them are kept.
#ifndef MethodListFile_h
#define MethodListFile_h

#include <optional>
#include <string>
#include <vector>

class MethodListFile {
 public:
  // Adds the next entry; a null value leaves its key undeclared.
  MethodListFile& Entry(const char* iWhere, const char* iRole, const char* iCommand,
                        const char* iTag, const char* iObject) {
    _entries.push_back({Value(iWhere), Value(iRole), Value(iCommand), Value(iTag), Value(iObject)});
    return *this;
  }

  // Number of entries added.
  [[nodiscard]] int Size() const { return static_cast<int>(_entries.size()); }

  // The declarations, one per line, entry after entry.
  [[nodiscard]] std::string Text() const {
    std::string text;
    for (std::size_t i = 0; i < _entries.size(); ++i) {
      const std::string stem = "KORBRIX.METHOD_LIST(" + std::to_string(i + 1) + ").";
      const Row& row = _entries[i];
      Declare(text, stem + "WHERE", row.where);
      Declare(text, stem + "ROLE", row.role);
      Declare(text, stem + "COMMAND", row.command);
      Declare(text, stem + "TAG", row.tag);
      Declare(text, stem + "KORAB", row.object);
    }
    return text;
  }

 private:
  struct Row {
    std::optional<std::string> where, role, command, tag, object;
  };

  static std::optional<std::string> Value(const char* iValue) {
    if (iValue == nullptr) return std::nullopt;
    return std::string(iValue);
  }

  static void Declare(std::string& ioText, const std::string& iKey,
                      const std::optional<std::string>& iValue) {
    if (!iValue) return;
    ioText += iKey + " = \"";
    for (const char character : *iValue) {
      if (character == '"' || character == '\\') ioText += '\\';
      ioText += character;
    }
    ioText += "\"\n";
  }

  std::vector<Row> _entries;
};

#endif
