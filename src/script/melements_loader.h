#pragma once

// Reads definition text into a document. The reader never fails on a bad line: what it cannot place it skips.

#include <memory>

#include "script/melement.h"

namespace footlight {

class CTextCoder;
class CTextFileReader;
class CWindow;

class CMElementsLoader {
 public:
  // Reads a definition file, plain or coded; null when it cannot be opened. When the command line asks for
  // it, a coded or decoded copy is first written beside the file.
  static std::unique_ptr<CMElements> load(CWindow* window, const CXString& fileName);
  // The same on text in memory, which stays the caller's; no copies are written.
  static std::unique_ptr<CMElements> load(CWindow* window, CTextFileReader* reader);
  // The parser itself. An empty source gives an empty list. `fileName` is for reports.
  static std::unique_ptr<CMElements> load(CTextCoder* coder, const CXString& fileName = {});
  // The next logical line: physical lines joined by their slashes, tabs and slashes gone, blanks trimmed.
  // `physicalLines`, if given, grows by the number of physical lines read.
  static CXString getLine(CTextCoder* coder, int* physicalLines = nullptr);
  // Accepts the document and writes nothing.
  static bool save(const CXString& fileName, const CMElements* elements);
};

}  // namespace footlight
