#include "files/path.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "files/file.h"
#include "files/file_name_resolver.h"
#include "support/test_places.h"
#include "support/test_platform.h"

namespace footlight {
namespace {

using testing::ElementsAre;

TEST(Path, ResolvesNamesOfScripts) {
  test::TestPlatform machine;
  test::TestPlaces places("C:\\root\\", "C:\\data\\");
  const CXString here = CFile::getCurrentDirectory();
  struct Row {
    const char* name;
    CXString result;
  };
  const Row rows[] = {
      {"a.img", "a.img"},
      {"$COMMON\\x", "C:\\data\\COMMON\\x"},
      {"&x", "C:\\data\\x"},
      {"a$b", "a$b"},
      {"$", "C:\\data\\"},
      {"", ""},
      {"a?b", here + "a\\b"},
      {"a\\b?c.txt", here + "a\\b\\c.txt"},
      {"a?", here + "a"},
      {"?a", here + "a"},
      {"?", here},
      {"a?b?c", here + "a\\b\\c"},
  };
  for (const Row& row : rows) EXPECT_EQ(CPath::resolveFileName(nullptr, row.name), row.result) << row.name;
  EXPECT_EQ(CPath::resolveFileNameEx(nullptr, "$COMMON\\x"), "C:\\root\\COMMON\\x");
}

TEST(Path, JoinsNames) {
  test::TestPlatform machine;
  EXPECT_EQ(CPath::getFullPath("C:\\a", "b"), "C:\\a\\b");
  EXPECT_EQ(CPath::getFullPath("C:\\a\\", "b"), "C:\\a\\b");
  EXPECT_EQ(CPath::getFullPath("C:\\a\\", "f", "b"), "C:\\a\\\\f\\b");
  EXPECT_EQ(CPath::getFullPath("C:\\a", "", "b"), "C:\\a\\b");
  EXPECT_EQ(CPath(nullptr).GetFullPath(""), CFile::getCurrentDirectory());
  EXPECT_EQ(CPath(nullptr, "a.b\\c.d.IMG").GetExtension(), "img");
  EXPECT_EQ(CPath(nullptr, "a.b\\c").GetExtension(), "");
}

TEST(Path, MovesPathsBelowTheRoots) {
  test::TestPlatform machine;
  test::TestPlaces places("C:\\root\\", "C:\\data");
  struct Row {
    const char* path;
    const char* local;
  };
  const Row rows[] = {
      {"D:\\x\\Dane\\y\\Dane\\f", "C:\\root\\Dane\\y\\Dane\\f"},
      {"D:\\x\\dane\\f", "D:\\x\\dane\\f"},
      {"D:\\COMMON\\Dane\\f", "C:\\root\\Dane\\f"},
      {"D:\\COMMON\\f", "C:\\root\\COMMON\\f"},
      {"D:\\Common\\wAvs\\f", "C:\\root\\wAvs\\f"},
      {"D:\\x\\f", "D:\\x\\f"},
  };
  for (const Row& row : rows) EXPECT_EQ(CFile::getLocalPath(row.path), row.local) << row.path;
  EXPECT_EQ(CFile::getDataRootPath("D:\\Dane\\f"), "C:\\data\\Dane\\f");
  EXPECT_TRUE(CFile::isHdd("c:\\x"));
  EXPECT_TRUE(CFile::isHdd("\\x"));
  EXPECT_TRUE(CFile::isHdd(""));
  EXPECT_FALSE(CFile::isHdd("D:\\x"));
}

TEST(FileNameResolver, SplitsPaths) {
  struct Row {
    const char* path;
    char drive;
    std::vector<CXString> directories;
    const char* file;
    const char* pure;
    const char* extension;
  };
  const Row rows[] = {
      {"C:\\a\\b\\c.seq", 'C', {"a", "b"}, "c.seq", "c", "seq"},
      {"a\\c.d.e", '\0', {"a"}, "c.d.e", "c", "d"},
      {"c", '\0', {}, "c", "c", ""},
      {"D:c.x", 'D', {}, "c.x", "c", "x"},
      {"D:\\", 'D', {}, "", "", ""},
      {"", '\0', {}, "", "", ""},
  };
  for (const Row& row : rows) {
    const CFileNameResolver parts(row.path);
    EXPECT_EQ(parts.getDrive(), row.drive) << row.path;
    EXPECT_EQ(parts.getDirectories(), row.directories) << row.path;
    EXPECT_EQ(parts.getFileName(), row.file) << row.path;
    EXPECT_EQ(parts.getPureFileName(), row.pure) << row.path;
    EXPECT_EQ(parts.getExtension(), row.extension) << row.path;
  }
}

}  // namespace
}  // namespace footlight
