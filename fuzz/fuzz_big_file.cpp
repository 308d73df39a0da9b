// Bytes as a big file on a disk in memory: it is opened and walked, its names are looked up, all of its files
// are read through the engine, and everything is unpacked.

#include <cstdlib>
#include <memory>

#include "files/big_file.h"
#include "pack/contents.h"
#include "platform/headless/headless_platform.h"
#include "support/memory_files.h"

namespace footlight::fuzz {

namespace {

constexpr std::size_t kMostBytes = 4096;
constexpr int kMostRead = 64;
constexpr const char* kName = "C:\\GAME\\f.big";

void demand(bool holds) {
  if (!holds) std::abort();
}

// A record that says it lies inside the file comes out whole.
void readThrough(const CBigFile& big, const BigFileRecord& record, std::size_t length) {
  demand(record.offset >= 0 && record.size >= 0);
  demand(static_cast<std::size_t>(record.offset) + static_cast<std::size_t>(record.size) <= length);
  const auto handle = big.openEntry(record);
  demand(handle != nullptr && handle->length() == record.size);
  std::vector<std::byte> bytes(static_cast<std::size_t>(record.size) + 1);
  demand(handle->read(bytes) == static_cast<std::size_t>(record.size));
}

void lookUp(CBigFile& big, const std::string& name) {
  const CXString path("\\" + name);
  const BigFileRecord* found = big.find(path.view());
  demand((big.Seek(path) >= 0) == (found != nullptr));
  demand(big.GetSize(path) == (found != nullptr ? found->size : 0));
  big.FileExists(path);
  big.FileExists("none\\..\\" + path);
  CFile::canRead(name);
  CFile::fileExists(path);
  CFile file(nullptr, name, CFile::kReadText);
  if (file.LastError() == 0) file.getLine();
}

void search(CBigFile& big, const std::string& name) {
  FileFindData data;
  big.FindFirst(name, &data);
  CFile::chDir(name);
  big.GetCurrentDirectory();
  data.attributes = FileFindData::kDirectory;
  CFile::findFirst("*", &data);
  CFile::chDir("C:\\GAME");
}

void play(std::span<const std::uint8_t> input) {
  const std::span<const std::uint8_t> used = input.first(std::min(input.size(), kMostBytes));
  const test::Disk disk{
      {kName, test::contentOf({reinterpret_cast<const char*>(used.data()), used.size()})},
      {"C:\\GAME\\out\\a", test::contentOf("")},
  };
  platform::HeadlessPlatform machine({}, std::make_unique<test::MemoryFiles>(disk));
  platform::use(&machine);
  CFile::openBigFile(kName);
  if (CBigFile* big = CFile::getBigFileIfc()) {
    int count = 0;
    pack::forEachFile(big->getTable(), [&](const std::string& name, const BigFileRecord& record) {
      if (++count > kMostRead) return;
      readThrough(*big, record, used.size());
      lookUp(*big, name);
      search(*big, name.substr(0, name.rfind('\\')));
    });
    pack::Outcome outcome;
    pack::list(*big, outcome);
    pack::extract(*big, "C:\\GAME\\out", outcome);
  }
  CFile::closeBigFile();
  for (const auto& [name, content] : static_cast<test::MemoryFiles&>(machine.files()).changes())
    demand(name.starts_with("C:\\GAME\\OUT\\"));
  platform::use(nullptr);
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::play({data, size});
  return 0;
}
