#pragma once

// File places for tests: a root folder, a data folder and, if asked for, the language folder "POL".

#include "files/file_places.h"
#include "platform/platform.h"

namespace footlight::test {

class TestPlaces : public CFilePlaces {
 public:
  TestPlaces(CXString root, CXString data) : root_(std::move(root)), data_(std::move(data)) { use(this); }

  CXString rootPath() const override { return root_; }
  CXString dataRoot() const override { return data_; }
  bool hasLanguage() const override { return polish; }
  CXString localFileName(const CXString& path) const override {
    const int slash = path.FindLast('\\');
    const CXString local = path.Left(slash + 1) + "POL\\" + path.Right(slash + 1);
    return platform::current().files().fileExists(local) ? local : path;
  }
  bool isToCode() const override { return toCode; }
  bool isToDecode() const override { return toDecode; }

  bool polish = false;
  bool toCode = false;
  bool toDecode = false;

 private:
  CXString root_;
  CXString data_;
};

}  // namespace footlight::test
