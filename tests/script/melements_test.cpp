#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "files/text_coder.h"
#include "foundation/limits.h"
#include "script/melements_loader.h"
#include "support/test_places.h"
#include "support/test_platform.h"

namespace footlight {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

CWindow* const kNoWindow = nullptr;

std::unique_ptr<CMElements> parse(const std::string& text) {
  CTextFileReader reader(nullptr, text.data(), static_cast<int>(text.size()));
  return CMElementsLoader::load(kNoWindow, &reader);
}

// "name{PROPERTY=value,...}[child,...]" for each element, in order.
std::string shown(const CMElements& document) {
  std::string result;
  for (const CMElement* element : document) {
    result += std::string(element->getName()) + "{";
    for (const auto& property : element->properties()) {
      result += std::string(property->getName()) + "=" + std::string(property->getValue()) + ",";
    }
    result += "}";
    if (element->getChildren().getSize() == 0) continue;
    result += "[";
    for (const CMElement* child : element->getChildren()) result += std::string(child->getName()) + ",";
    result += "]";
  }
  return result;
}

TEST(MElementsLoader, ParsesLines) {
  struct Row {
    const char* text;
    const char* document;
  };
  const Row rows[] = {
      {"", ""},
      {"\n\n  \n", ""},
      {"OBJECT=A\nA:TYPE=INTEGER\nA:VALUE=5", "A{TYPE=INTEGER,VALUE=5,}"},
      {"OBJECT:A\nA=TYPE:INTEGER\n", "A{TYPE=INTEGER,}"},  // colon and equals sign are one
      {"::OBJECT==A::\n", "A{}"},
      {"OBJECT=A\nA:B=C:D=E", "A{B=C D E,}"},
      {"OBJECT=A\nA:B=C::==D=", "A{B=C D,}"},
      {"OBJECT=A\nA:B=  C  D  ", "A{B=  C  D,}"},
      {"OBJECT=A\nA:B =C", "A{B =C,}"},
      {"  \t OBJECT=A", "A{}"},
      {"OBJECT= A", " A{}"},
      {"OBJECT=A\nA:B", "A{B=,}"},
      {"OBJECT=A\nA:B=1\nA:B\nA:B=2", "A{B=1,B=2,}"},
      {"OBJECT=A\nA", "A{}"},
      {"OBJECT=A\nA:X=1\nOBJECT=A:OBJECT=B\nA:Y=2", "A{X=1,Y=2,}"},  // the repeated line is dropped whole
      {"OBJECT=A:OBJECT=B:A:X=1 OBJECT=C", "A{X=1 OBJECT C,}B{}"},
      {"OBJECT", ""},
      {"object=A", ""},
      {"OBJECT=A\na:X=1\nB:X=1", "A{}"},
      {"A:X=1\nOBJECT=A", "A{}"},
      {"IMPORT=S\nS:X=1\nIMPORT=S", "S{TYPE=SEQUENCE,X=1,}"},
      {"OBJECT=A\nOBJECT=B\nA:ADD:B", "A{}B{}[A,]"},
      {"OBJECT=A\nOBJECT=B\nA:APPLY:B", "A{}[B,]B{}"},
      {"OBJECT=A\nOBJECT=B\nA:ADD:B:B:ADD:A:A:X", "A{X=,}[B,]B{}[A,]"},
      {"OBJECT=A\nA:ADD:B:A:X=1\nA:ADD\nA:APPLY:C:A:Y=1\nA:ADD:A", "A{}[A,]"},
      {"# OBJECT=A\nOBJECT=B\n  #OBJECT=C", "B{}"},
      {"OBJECT=A\n#/\nA:X=1\nA:Y=2", "A{Y=2,}"},  // a joined comment
      {"OBJECT=A\n!\nOBJECT=B", "A{}"},
      {"OBJECT=A\nA:X=!\nA:Y=#", "A{X=!,Y=#,}"},
      {"OBJECT=A\nA:PATH=a/b\n c\nA:X=1", "A{PATH=ab c,X=1,}"},  // a slash joins lines and vanishes
      {"OBJECT=A\nA:X=a /\nb", "A{X=a b,}"},
      {"OBJECT=A\nA:X=a/", "A{X=a,}"},
      {"OBJECT=A\nA:X=1/\n/\n:Y", "A{X=1 Y,}"},
      {"OBJECT=A\nA:\tX=\t1\t2", "A{X=12,}"},
      {"DEF:A(X=1|Y = 2 3 |Z=(a=b))", "A{X=1,Y=2 3,Z=(a=b),}"},
      {"DEF:A( X= 1 ||Y|=2)tail\nDEF=A()\nA:Z=3", "A{X=1,=2,Z=3,}A{}"},
      {"DEF:A(X=1\nDEF:A)\nDEF:\nDEF(A)\nDEF:B)(", ""},
      {"OBJECT=A:DEF:B(X=1)", "A{}CT=A:DEF:B{X=1,}"},
  };
  for (const Row& row : rows) EXPECT_EQ(shown(*parse(row.text)), row.document) << row.text;
}

TEST(MElementsLoader, GivesLogicalLines) {
  const std::string text = "a\n\nab\n x /\n\ty/z\nlast /";
  CTextFileReader reader(nullptr, text.data(), static_cast<int>(text.size()));
  CTextCoder coder(nullptr, &reader, true);
  int lines = 0;
  EXPECT_EQ(CMElementsLoader::getLine(&coder, &lines), "a\n");
  EXPECT_EQ(CMElementsLoader::getLine(&coder, &lines), "\n");
  EXPECT_EQ(CMElementsLoader::getLine(&coder, &lines), "ab");
  EXPECT_EQ(lines, 3);
  EXPECT_EQ(CMElementsLoader::getLine(&coder, &lines), "x yzlast ");  // its slash stood behind the blank
  EXPECT_EQ(lines, 6);
  EXPECT_TRUE(coder._eof());
}

TEST(MElementsLoader, CutsLongLogicalLines) {
  const auto most = static_cast<std::size_t>(limits::kLogicalLineBytes);
  for (const std::size_t length : {most - 1, most, most + 1}) {
    resetGuardHits();
    const std::string value(length - 5, 'v');  // behind "A:X=/"
    const auto document = parse("OBJECT=A\nA:X=/\n" + value + "\nA:Y=1");
    EXPECT_EQ(document->get("A")->getPropertyValue("X").Length(),
              static_cast<int>(std::min(length, most)) - 5);
    EXPECT_EQ(document->get("A")->getPropertyIntValue("Y"), 1);
    EXPECT_EQ(guardHits("definition.line"), length > most ? 1 : 0);
  }
}

TEST(MElementsLoader, LoadsFilesPlainAndCoded) {
  test::TestPlatform machine;
  test::TestPlaces places(machine.enginePath(""), machine.enginePath(""));
  EXPECT_EQ(CMElementsLoader::load(kNoWindow, "missing.cnv"), nullptr);
  machine.folder.write("s.cnv", "OBJECT=A\r\nA:X=1\r\n");
  places.toCode = true;
  EXPECT_EQ(shown(*CMElementsLoader::load(kNoWindow, "s.cnv")), "A{X=1,}");
  EXPECT_EQ(machine.folder.read("s.cnv.coded").substr(0, 8), "{<C:6>}\n");
  places.toCode = false;
  places.toDecode = true;
  EXPECT_EQ(shown(*CMElementsLoader::load(kNoWindow, "s.cnv.coded")), "A{X=1,}");
  EXPECT_EQ(machine.folder.read("s.cnv.coded.decoded"), "OBJECT=A\nA:X=1\n\n");
  EXPECT_FALSE(machine.folder.exists("s.cnv.decoded"));
}

TEST(MElementsLoader, RemembersAndReportsPlaces) {
  test::TestPlatform machine;
  machine.folder.write("s.cnv",
                       "#\nOBJECT=A\nA:X=1/\n2\n\nB:X=1\nOBJECT=\nA:ADD:C\nA:APPLY:\nOBJECT=A\nDEF:D\n");
  std::vector<std::string> reports;
  diagnose::listen([&](const diagnose::Report& report) {
    EXPECT_EQ(report.file, machine.enginePath("s.cnv"));
    reports.push_back(std::to_string(report.line) + " " + report.object);
  });
  const auto document = CMElementsLoader::load(kNoWindow, "s.cnv");
  diagnose::listen({});
  EXPECT_THAT(reports, ElementsAre("6 B", "7 OBJECT", "8 C", "9 ", "10 A", "11 DEF"));
  const CMElement* element = document->get("A");
  EXPECT_EQ(element->origin().line, 2);
  EXPECT_EQ(element->properties().get("X")->origin().line, 3);
  EXPECT_EQ(diagnose::fileName(element->origin().file), machine.enginePath("s.cnv"));
}

TEST(MElement, ReadsTypedValues) {
  const auto document =
      parse("OBJECT=A\nA:N= 12x\nA:B=TrUe\nA:C=TRUE \nA:D=2.5\nA:L=1, 2,,3\nA:E\nA:N=7\nA:low=1");
  const CMElement& element = *document->get("A");
  EXPECT_EQ(element.getPropertyIntValue("N"), 12);
  EXPECT_TRUE(element.getPropertyBoolValue("B"));
  EXPECT_TRUE(element.getPropertyBoolValue("C"));
  EXPECT_FALSE(element.getPropertyBoolValue("N"));
  EXPECT_EQ(element.getPropertyDoubleValue("D"), 2.5);
  EXPECT_THAT(*element.getPropertyListValue("L"), ElementsAre("1", "2", "3"));
  EXPECT_THAT(*element.getPropertyListValue("E"), IsEmpty());
  EXPECT_EQ(element.getPropertyPointValue("L"), CXPoint(1, 2));
  EXPECT_EQ(element.getPropertySizeValue("L"), CXSize(1, 2));
  EXPECT_EQ(element.getPropertyRectValue("L"), CXRect(1, 2, 3, 0));
  EXPECT_TRUE(element.isPropertyAvailable("low"));
  EXPECT_FALSE(element.hasProperty("low"));
  EXPECT_TRUE(element.hasProperty("n"));
  EXPECT_EQ(element.getPropertyValue("Z"), "");
  EXPECT_EQ(element.getPropertyIntValue("Z"), 0);
  EXPECT_FALSE(element.getPropertyListValue("Z"));
  EXPECT_EQ(element.getPropertyRectValue("Z"), CXRect());
}

TEST(MElement, FirstPropertyOfANameCounts) {
  for (const int filler : {0, 14, 15, 40}) {  // below and above the length from which lists have an index
    CMElement element("A", {});
    for (int i = 0; i < filler; ++i) element.addProperty(CXString::Format("F%d", i), "x");
    element.addProperty("P", "1");
    element.addProperty("P", "2");
    element.addProperty("P");
    EXPECT_EQ(element.properties().getSize(), filler + 2);
    EXPECT_EQ(element.getPropertyValue("P"), "1");
    element.setProperty("P", "3");
    element.setProperty("Q", "4");
    EXPECT_EQ(element.getPropertyValue("P"), "3");
    element.removeProperty("P");
    EXPECT_EQ(element.getPropertyValue("P"), "2");
    element.removeProperty("P");
    EXPECT_FALSE(element.isPropertyAvailable("P"));
    EXPECT_FALSE(element.isPropertyAvailable("Q"));
    element.removeAll();
    EXPECT_EQ(element.properties().getSize(), 0);
  }
}

}  // namespace
}  // namespace footlight
