// The order in which the source units of VX0SESS0 initialise their statics
// when the library is loaded. The loader calls the functions listed in the
// library's .init_array section one after another; the compiler emits one
// such function per source unit, named _GLOBAL__sub_I_<unit>.cpp. This test
// reads the built library's ELF file, follows each .init_array slot to the
// function it calls, and checks that the units' functions come in the order
// of the link.
#include <elf.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <vector>

#ifndef KOR_TEST_LIBRARY
#error "KOR_TEST_LIBRARY must name the built VX0SESS0 library"
#endif

namespace {

using Names = std::vector<std::string>;

// The units of VX0SESS0 in the order their statics must be initialised.
const Names kUnitOrder = {"KORListLumSessionFile", "KORListLumSessionFileDef",
                          "KORListLumViewerBag",   "KORListLumViewerDef",
                          "KORLumSessionFile",     "KORLumSessionFileDef",
                          "KORLumSessionFileType", "KORLumSessionFileUtilities",
                          "KORLumViewerBag",       "KORLumViewerDef"};

constexpr const char kInitialiserPrefix[] = "_GLOBAL__sub_I_";
constexpr const char kUnitSuffix[] = ".cpp";

// A 64-bit little-endian ELF file read whole into memory.
class ElfFile {
 public:
  explicit ElfFile(const std::string& iPath) {
    std::ifstream file(iPath, std::ios::binary);
    _bytes.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }

  // Empty when the file is a 64-bit little-endian ELF file that this reader
  // understands, else why not.
  [[nodiscard]] std::string Problem() const {
    if (_bytes.size() < sizeof(Elf64_Ehdr)) return "too short for an ELF header";
    const auto& header = Read<Elf64_Ehdr>(0);
    if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0) return "not an ELF file";
    if (header.e_ident[EI_CLASS] != ELFCLASS64) return "not a 64-bit ELF file";
    if (header.e_ident[EI_DATA] != ELFDATA2LSB) return "not a little-endian ELF file";
    if (header.e_shentsize != sizeof(Elf64_Shdr)) return "unexpected section header size";
    if (header.e_shoff + std::size_t{header.e_shnum} * sizeof(Elf64_Shdr) > _bytes.size()) {
      return "section headers beyond the end of the file";
    }
    return std::string();
  }

  [[nodiscard]] std::vector<Elf64_Shdr> Sections() const {
    const auto& header = Read<Elf64_Ehdr>(0);
    std::vector<Elf64_Shdr> sections;
    for (std::size_t i = 0; i < header.e_shnum; ++i) {
      sections.push_back(Read<Elf64_Shdr>(header.e_shoff + i * sizeof(Elf64_Shdr)));
    }
    return sections;
  }

  // The section named iName, if the file has one.
  [[nodiscard]] std::optional<Elf64_Shdr> Section(const char* iName) const {
    const auto& header = Read<Elf64_Ehdr>(0);
    const std::vector<Elf64_Shdr> sections = Sections();
    if (header.e_shstrndx >= sections.size()) return std::nullopt;
    const Elf64_Shdr& names = sections[header.e_shstrndx];
    for (const Elf64_Shdr& section : sections) {
      if (String(names, section.sh_name) == iName) return section;
    }
    return std::nullopt;
  }

  // The NUL-terminated text at iOffset of the string table iTable.
  [[nodiscard]] std::string String(const Elf64_Shdr& iTable, std::size_t iOffset) const {
    const std::size_t start = iTable.sh_offset + iOffset;
    if (iOffset >= iTable.sh_size || start >= _bytes.size()) return std::string();
    const std::size_t end = std::min<std::size_t>(iTable.sh_offset + iTable.sh_size, _bytes.size());
    const char* text = _bytes.data() + start;
    return std::string(text, strnlen(text, end - start));
  }

  template <typename Record>
  [[nodiscard]] Record Read(std::size_t iOffset) const {
    Record record{};
    if (iOffset + sizeof(Record) <= _bytes.size()) {
      std::memcpy(&record, _bytes.data() + iOffset, sizeof(Record));
    }
    return record;
  }

 private:
  std::vector<char> _bytes;
};

// The address each slot of .init_array holds once the library is loaded
// (relative to the load address), in slot order. A shared library's slots
// are relocated at load: the relative relocation of a slot gives its target;
// a slot without one holds its target in place.
std::vector<Elf64_Addr> InitialiserAddresses(const ElfFile& iFile, const Elf64_Shdr& iInitArray) {
  std::map<Elf64_Addr, Elf64_Addr> relocated;  // slot address -> target
  for (const Elf64_Shdr& section : iFile.Sections()) {
    if (section.sh_type != SHT_RELA || section.sh_entsize != sizeof(Elf64_Rela)) continue;
    for (std::size_t i = 0; i < section.sh_size / sizeof(Elf64_Rela); ++i) {
      const auto relocation = iFile.Read<Elf64_Rela>(section.sh_offset + i * sizeof(Elf64_Rela));
      const auto type = ELF64_R_TYPE(relocation.r_info);
      if (type == R_X86_64_RELATIVE || type == R_AARCH64_RELATIVE) {
        relocated[relocation.r_offset] = static_cast<Elf64_Addr>(relocation.r_addend);
      }
    }
  }
  std::vector<Elf64_Addr> addresses;
  for (std::size_t i = 0; i < iInitArray.sh_size / sizeof(Elf64_Addr); ++i) {
    const Elf64_Addr slot = iInitArray.sh_addr + i * sizeof(Elf64_Addr);
    const auto found = relocated.find(slot);
    addresses.push_back(found != relocated.end() ? found->second
                                                 : iFile.Read<Elf64_Addr>(iInitArray.sh_offset +
                                                                          i * sizeof(Elf64_Addr)));
  }
  return addresses;
}

// The names of the functions defined at each address, from the full symbol
// table.
std::multimap<Elf64_Addr, std::string> FunctionNames(const ElfFile& iFile,
                                                     const Elf64_Shdr& iSymbols) {
  std::multimap<Elf64_Addr, std::string> names;
  const std::vector<Elf64_Shdr> sections = iFile.Sections();
  if (iSymbols.sh_link >= sections.size()) return names;
  const Elf64_Shdr& strings = sections[iSymbols.sh_link];
  for (std::size_t i = 0; i < iSymbols.sh_size / sizeof(Elf64_Sym); ++i) {
    const auto symbol = iFile.Read<Elf64_Sym>(iSymbols.sh_offset + i * sizeof(Elf64_Sym));
    if (ELF64_ST_TYPE(symbol.st_info) != STT_FUNC || symbol.st_shndx == SHN_UNDEF) continue;
    names.emplace(symbol.st_value, iFile.String(strings, symbol.st_name));
  }
  return names;
}

// The units whose initialisers .init_array calls, in call order.
Names InitialisedUnits(const ElfFile& iFile) {
  const std::optional<Elf64_Shdr> initArray = iFile.Section(".init_array");
  const std::optional<Elf64_Shdr> symbols = iFile.Section(".symtab");
  if (!initArray || !symbols) {
    ADD_FAILURE() << "the library has no " << (initArray ? ".symtab" : ".init_array");
    return {};
  }
  const std::multimap<Elf64_Addr, std::string> functions = FunctionNames(iFile, *symbols);
  Names units;
  for (const Elf64_Addr address : InitialiserAddresses(iFile, *initArray)) {
    const auto [first, last] = functions.equal_range(address);
    for (auto function = first; function != last; ++function) {
      const std::string& name = function->second;
      const std::size_t prefixLength = sizeof(kInitialiserPrefix) - 1;
      const std::size_t suffixLength = sizeof(kUnitSuffix) - 1;
      if (name.size() > prefixLength + suffixLength &&
          name.compare(0, prefixLength, kInitialiserPrefix) == 0 &&
          name.compare(name.size() - suffixLength, suffixLength, kUnitSuffix) == 0) {
        units.push_back(name.substr(prefixLength, name.size() - prefixLength - suffixLength));
      }
    }
  }
  return units;
}

}  // namespace

TEST(KORLumStaticInitialisation, UnitsAreInitialisedInLinkOrder) {
  const ElfFile library(KOR_TEST_LIBRARY);
  ASSERT_EQ(library.Problem(), "") << KOR_TEST_LIBRARY;
  EXPECT_EQ(InitialisedUnits(library), kUnitOrder);
}
