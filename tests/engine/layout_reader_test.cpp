// Stored layouts: what their XML says, what a derived one changes, and what is refused with file and line.
#include "engine/layout_reader.h"

#include <gtest/gtest.h>

#include <clocale>

#include "tests/engine/read.h"

namespace dorvo {
namespace {

using engine::Align;
using engine::ControlKind;
using engine::ControlLayout;
using engine::LayoutPtr;
using engine::LineStyle;
using engine::SectionKind;
using engine::Sum;
using engine::VAlign;
using tests::problem_of;
using tests::read;

const ControlLayout* find(const LayoutPtr& layout, std::string_view name) {
  for (const auto& section : layout->sections) {
    for (const ControlLayout& control : section.controls) {
      if (control.name == name) return &control;
    }
  }
  return nullptr;
}

std::string names(const LayoutPtr& layout, std::string_view section) {
  std::string result;
  for (const ControlLayout& control : layout->find_section(section)->controls) result += control.name + " ";
  return result;
}

constexpr const char* kBill = R"(<?xml version="1.0"?>
<Layout name="Bill" version="1" width="9000">
  <Style name="body" font="Times New Roman" size="9.5" align="right" valign="middle" color="#102030"/>
  <Section kind="PageFooter" name="PageFooter" height="300"/>
  <Section kind="GroupHeader" name="grpOuter" height="10" key="CustomerID" repeat="true" newpage="before"/>
  <Section kind="GroupHeader" name="grpInner" height="20" keep="false"/>
  <Section kind="Detail" name="Detail" height="315" columns="3" spacing="100">
    <Label name="Label1" left="10" top="20" width="30" height="40" text="one&#10;two" tag="DH" visible="false" style="body"/>
    <Field name="txtNet" left="-5" top="0" width="900" height="240" column="Net" style="body" bold="true" align="left"
           grow="true" shrink="true" wrap="false" shares="label1" border="true" weight="20" block="net"/>
    <Line name="Line1" left="100" top="50" x2="40" y2="90" weight="5" line="dash" color="#FF0000"/>
    <Shape name="Shape1" left="1" top="2" width="3" height="4" fill="#EEEEEE"/>
    <SubReport name="sub" left="0" top="0" width="9000" height="300" report="Annexure"/>
    <PageBreak name="PageBreak1" top="310"/>
    <Data name="recMaster"/>
  </Section>
  <Section kind="GroupFooter" name="footInner" height="1">
    <Field name="txtSub" left="0" top="0" width="1" height="1" column="Net" sum="group"/>
  </Section>
  <Section kind="GroupFooter" name="footOuter" height="1">
    <Field name="txtAll" left="0" top="0" width="1" height="1" column="Net" sum="report"/>
    <Field name="txtInnermost" left="0" top="0" width="1" height="1" column="Net" sum="group" group="grpinner"/>
  </Section>
</Layout>)";

TEST(LayoutReader, ReadsEveryAttribute) {
  const LayoutPtr bill = read(kBill);
  EXPECT_EQ(bill->name, "Bill");
  EXPECT_EQ(bill->width, 9000);
  EXPECT_EQ(bill->file, "Test.xml");

  const auto& outer = *bill->find_section("GRPOUTER");
  EXPECT_EQ(outer.key, "CustomerID");
  EXPECT_TRUE(outer.repeat && outer.keep_together && outer.new_page_before && !outer.new_page_after);
  EXPECT_FALSE(bill->find_section("grpInner")->keep_together);
  const auto& detail = *bill->find_section("Detail");
  EXPECT_EQ(detail.columns, 3);
  EXPECT_EQ(detail.column_spacing, 100);
  EXPECT_EQ(names(bill, "Detail"), "Label1 txtNet Line1 Shape1 sub PageBreak1 recMaster ");

  const ControlLayout& label = *find(bill, "Label1");
  EXPECT_EQ(label.kind, ControlKind::Label);
  EXPECT_EQ(label.text, "one\r\ntwo");
  EXPECT_EQ(label.tag, "DH");
  EXPECT_FALSE(label.visible);
  EXPECT_EQ(label.line, 8);
  EXPECT_EQ(label.style->font, "Times New Roman");
  EXPECT_EQ(label.style->half_points, 19);
  EXPECT_EQ(label.style->align, Align::Right);
  EXPECT_EQ(label.style->valign, VAlign::Middle);
  EXPECT_EQ(label.style->color, 0x102030u);

  const ControlLayout& net = *find(bill, "txtNet");
  EXPECT_EQ(net.left, -5);
  EXPECT_EQ(net.column, "Net");
  EXPECT_TRUE(net.grow && net.shrink && !net.wrap && net.border);
  EXPECT_EQ(net.weight, 20);
  EXPECT_TRUE(net.style->bold) << "an exception to its style";
  EXPECT_EQ(net.style->align, Align::Left);
  EXPECT_EQ(net.style->half_points, 19) << "the rest of the style stays";

  const ControlLayout& line = *find(bill, "Line1");
  EXPECT_EQ(line.width, -60) << "to its end point";
  EXPECT_EQ(line.height, 40);
  EXPECT_EQ(line.line_style, LineStyle::Dash);
  EXPECT_EQ(line.color, 0xFF0000u);
  EXPECT_TRUE(find(bill, "Shape1")->filled);
  EXPECT_EQ(find(bill, "sub")->report, "Annexure");
}

TEST(LayoutReader, SectionsStandInPrintOrderAndGroupsPair) {
  const LayoutPtr bill = read(kBill);
  std::string order;
  for (const auto& section : bill->sections) order += section.name + ">" + section.group + " ";
  EXPECT_EQ(order, "grpOuter> grpInner> Detail> footInner>grpInner footOuter>grpOuter PageFooter> ");
  EXPECT_EQ(find(bill, "txtSub")->group, "grpInner") << "the group of its own section";
  EXPECT_EQ(find(bill, "txtInnermost")->group, "grpinner");
  EXPECT_EQ(find(bill, "txtAll")->sum, Sum::Report);
}

TEST(LayoutReader, ControlsThatLookAlikeShareOneStyle) {
  const LayoutPtr layout = read(R"(<Layout name="A"><Style name="b" size="8"/><Section kind="Detail" name="Detail">
      <Label name="L1" style="b"/><Label name="L2" style="b"/><Label name="L3" style="b" bold="true"/>
      <Label name="L4" bold="true" style="B"/></Section></Layout>)");
  EXPECT_EQ(find(layout, "L1")->style, find(layout, "L2")->style);
  EXPECT_EQ(find(layout, "L3")->style, find(layout, "L4")->style);
  EXPECT_EQ(layout->styles.size(), 2u);
}

constexpr const char* kBase = R"(<Layout name="Form201">
  <Style name="body" size="10"/>
  <Section kind="Detail" name="Detail" height="1000">
    <Label name="lblTitle" left="1" top="2" width="3" height="4" text="FORM 201" style="body" italic="true"/>
    <Field name="Field8" left="10" top="10" width="5" height="5" column="FromDate" block="chalan"/>
    <Field name="Field9" left="20" top="10" width="5" height="5" column="ToDate" block="chalan" shares="Field8"/>
    <Line name="Line7" left="0" top="50" x2="100" y2="50" block="chalan"/>
  </Section>
</Layout>)";

TEST(LayoutReader, DerivedLayoutRestatesOnlyWhatDiffers) {
  const tests::Bases bases = {{"Form201", kBase}};
  const LayoutPtr form = read(R"(<Layout name="Form202" base="Form201">
    <Style name="body" bold="true"/>
    <Section kind="PageHeader" name="PageHeader" height="7"/>
    <Section name="detail" height="900">
      <Label name="lblTitle" text="FORM 202" left="9"/>
      <Label name="lblNew" style="body"/>
      <Field name="Field9" top="99"/>
      <Line name="Line7" y2="60"/>
      <Shift block="chalan" left="-120" top="40"/>
      <Rename name="Field8" to="Field9"/>
      <Rename name="Field9" to="Field8"/>
    </Section></Layout>)",
                              bases);
  EXPECT_EQ(form->name, "Form202");
  EXPECT_EQ(form->base, "Form201");
  EXPECT_EQ(form->sections[0].name, "PageHeader") << "a new section takes its place in print order";
  EXPECT_EQ(form->sections[1].height, 900);
  EXPECT_EQ(names(form, "Detail"), "lblTitle Field9 Field8 Line7 lblNew ") << "a new control stands last";

  const ControlLayout& title = *find(form, "lblTitle");
  EXPECT_EQ(title.text, "FORM 202");
  EXPECT_EQ(title.left, 9);
  EXPECT_EQ(title.top, 2);
  EXPECT_TRUE(title.style->bold && title.style->italic) << "the style's change, and the control's own exception";

  const ControlLayout& from = *find(form, "Field9");
  EXPECT_EQ(from.column, "FromDate") << "the two changed names";
  EXPECT_EQ(from.left, -110) << "moved with its block";
  EXPECT_EQ(from.top, 99) << "a restated position is where it stands, whatever moved before";
  EXPECT_EQ(find(form, "Field8")->shares, "Field9") << "names elsewhere follow";
  const ControlLayout& line = *find(form, "Line7");
  EXPECT_EQ(line.top, 90);
  EXPECT_EQ(line.height, -30) << "the restated end stands";
}

TEST(LayoutReader, DerivedLayoutTakesControlsOut) {
  const tests::Bases bases = {{"Form201", kBase}};
  const LayoutPtr form = read(R"(<Layout name="F" base="Form201"><Section name="Detail">
      <Remove name="LINE7"/><Remove name="Field9"/></Section></Layout>)",
                              bases);
  EXPECT_EQ(names(form, "Detail"), "lblTitle Field8 ");
}

TEST(LayoutReader, ReadsTheSameInALocaleOfDecimalCommas) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  const bool there = std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
  const LayoutPtr layout = read(R"(<Layout name="A"><Section kind="Detail" name="Detail">
      <Label name="L" size="7.5"/></Section></Layout>)");
  std::setlocale(LC_ALL, before.c_str());
  EXPECT_EQ(find(layout, "L")->style->half_points, 15) << (there ? "German" : "the machine has no German locale");
}

struct Refused {
  const char* story;
  std::string xml;
  const char* message;
};

std::string detail(const std::string& inside) {
  return "<Layout name=\"A\">\n<Section kind=\"Detail\" name=\"Detail\">\n" + inside + "</Section></Layout>";
}
std::string layout(const std::string& inside) {
  return "<Layout name=\"A\">\n" + inside + "\n<Section kind=\"Detail\" name=\"Detail\"/></Layout>";
}

TEST(LayoutReader, RefusesWithFileAndLine) {
  const std::string header = "<Section kind=\"GroupHeader\" name=\"G1\"/>\n";
  const std::vector<Refused> table = {
      {"no XML", "<Layout name=\"A\">\n<Section", "Test.xml:2: no XML"},
      {"empty file", "", "Test.xml:1: no XML"},
      {"another root", "\n<Report/>", "Test.xml:2: found the element Report, expected the element Layout"},
      {"no name", "<Layout/>", "Test.xml:1: Layout: the attribute name is missing"},
      {"newer format", "<Layout name=\"A\" version=\"2\"/>", "Test.xml:1: Layout A: version=\"2\", expected 1"},
      {"no Detail", "<Layout name=\"A\"/>", "Test.xml:1: Layout A: a section of kind Detail is missing"},
      {"a byte that is no UTF-8", "<Layout\nname=\"\xC3\x28\"/>", "Test.xml:2: a byte that is no UTF-8"},
      {"a NUL", std::string("<Layout\0/>", 10), "Test.xml:1: a control character"},
      {"a control character as entity", detail("<Label name=\"L\" text=\"&#7;\"/>"), "Test.xml:3: Label L: text="},
      {"unknown element", layout("<Font/>"), "Test.xml:2: found the element Font, expected Style or Section"},
      {"unknown control", detail("<Box name=\"b\"/>"), "Test.xml:3: section Detail: found the element Box"},
      {"text between", detail("\nhello"), "text between the elements"},
      {"element inside", detail("<Label name=\"L\"><b/></Label>"), "Test.xml:3: Label L: found the element b inside"},
      {"unknown attribute", detail("<Label name=\"L\"\n  colour=\"#000000\"/>"),
       "Test.xml:3: Label L: unknown attribute colour, expected one of name, left"},
      {"attribute of another kind", detail("<Label name=\"L\" column=\"Name\"/>"), "unknown attribute column"},
      {"a line has no style", detail("<Line name=\"L\" bold=\"true\"/>"), "unknown attribute bold"},
      {"attribute twice", detail("<Label name=\"L\" left=\"1\" left=\"2\"/>"), "the attribute left stands twice"},
      {"no number", detail("<Label name=\"L\" left=\"1in\"/>"), "Test.xml:3: Label L: left=\"1in\", expected a whole"},
      {"decimal comma", detail("<Label name=\"L\" size=\"7,5\"/>"), "size=\"7,5\", expected points"},
      {"a third of a point", detail("<Label name=\"L\" size=\"7.3\"/>"), "size=\"7.3\", expected points"},
      {"negative width", detail("<Label name=\"L\" width=\"-1\"/>"), "width=\"-1\", expected a whole number from 0"},
      {"too far out", detail("<Label name=\"L\" left=\"1000000\" width=\"1\"/>"), "L: lies too far out"},
      {"no flag", detail("<Label name=\"L\" visible=\"yes\"/>"), "visible=\"yes\", expected true or false"},
      {"no color", detail("<Label name=\"L\" color=\"red\"/>"), "color=\"red\", expected a color as #RRGGBB"},
      {"signed color", detail("<Label name=\"L\" color=\"#-12345\"/>"), "expected a color"},
      {"no such word", detail("<Label name=\"L\" align=\"centre\"/>"), "expected one of left, center, right"},
      {"no name of a control", detail("<Label left=\"1\"/>"), "Test.xml:3: Label: the attribute name is missing"},
      {"a name with a blank", detail("<Label name=\"my label\"/>"), "expected a name of letters, digits and _"},
      {"name twice", detail("<Label name=\"L\"/>\n<Label name=\"l\"/>"),
       "Test.xml:4: Label l: the name is taken on line 3"},
      {"name twice in two sections",
       layout("<Section kind=\"PageHeader\" name=\"P\"><Label name=\"L\"/></Section>"
              "<Section kind=\"PageFooter\" name=\"Q\">\n<Line name=\"L\"/></Section>"),
       "Test.xml:3: L: the name is taken at Test.xml:2"},
      {"control named as a section", detail("<Label name=\"detail\"/>"), "the name is taken"},
      {"unknown style", detail("<Label name=\"L\" style=\"big\"/>"), "Test.xml:3: L: style=\"big\", expected the name"},
      {"unknown neighbour", detail("<Label name=\"L\" shares=\"M\"/>"), "L: shares=\"M\", expected the name of a"},
      {"total of nothing", detail("<Field name=\"F\" sum=\"report\"/>"), "F: a total needs column and sum"},
      {"total of no group", detail("<Field name=\"F\" column=\"c\" sum=\"group\"/>"),
       "F: group=\"\", expected the name"},
      {"two details", layout("<Section kind=\"Detail\" name=\"D2\"/>"), "a layout has one section of this kind"},
      {"key of a Detail", "<Layout name=\"A\"><Section kind=\"Detail\" name=\"D\" key=\"x\"/></Layout>",
       "Section D: only a GroupHeader has the attribute key"},
      {"columns of a header", layout("<Section kind=\"PageHeader\" name=\"P\" columns=\"2\"/>"),
       "only a Detail has the attribute columns"},
      {"footer of no group", layout("<Section kind=\"GroupFooter\" name=\"F\" group=\"G1\"/>"),
       "Test.xml:2: Section F: group=\"G1\", expected the name of a GroupHeader"},
      {"two footers of one group",
       layout(header + "<Section kind=\"GroupFooter\" name=\"F\" group=\"G1\"/><Section kind=\"GroupFooter\" "
                       "name=\"F2\" group=\"G1\"/>"),
       "group footers stand from inner to outer"},
      {"no section kind", layout("<Section name=\"P\"/>"), "Test.xml:2: Section P: the attribute kind is missing"},
      {"no such base", "<Layout name=\"A\" base=\"B\"/>", "Test.xml:1: base: no layout B"},
      {"remove without base", detail("<Remove name=\"L\"/>"), "section Detail of the base has no such control"},
      {"shift of no block", detail("<Shift block=\"b\" left=\"1\"/>"), "of the base has no block b"},
      {"rename to nothing", detail("<Label name=\"L\"/><Rename name=\"M\" to=\"L\"/>"), "has no such control"},
  };
  for (const Refused& each : table) {
    EXPECT_NE(problem_of(each.xml).find(each.message), std::string::npos)
        << each.story << "\n  found:    " << problem_of(each.xml) << "\n  expected: " << each.message;
  }
}

TEST(LayoutReader, RefusesWrongChangesOfABase) {
  const tests::Bases bases = {{"Form201", kBase}, {"Loop", R"(<Layout name="Loop" base="Loop"/>)"}};
  const std::vector<Refused> table = {
      {"bases in a circle", R"(<Layout name="A" base="Loop"/>)", "Loop.xml:1: bases that run in a circle"},
      {"kind of a control", R"(<Layout name="A" base="Form201"><Section name="Detail">
         <Label name="Line7"/></Section></Layout>)",
       "Test.xml:2: Label Line7: the base has it as Line"},
      {"kind of a section", R"(<Layout name="A" base="Form201"><Section name="Detail" kind="PageFooter"/></Layout>)",
       "expected the kind that the base gives it"},
      {"rename onto another", R"(<Layout name="A" base="Form201"><Section name="Detail">
         <Rename name="Field8" to="Field9"/></Section></Layout>)",
       "Field9: the name is taken"},
      {"rename twice", R"(<Layout name="A" base="Form201"><Section name="Detail">
         <Rename name="Field8" to="a"/><Rename name="Field8" to="b"/></Section></Layout>)",
       "renamed twice"},
      {"a neighbour that went out", R"(<Layout name="A" base="Form201"><Section name="Detail">
         <Remove name="Field8"/></Section></Layout>)",
       "Form201.xml:6: Field9: shares=\"Field8\", expected the name of a control"},
  };
  for (const Refused& each : table) {
    EXPECT_NE(problem_of(each.xml, bases).find(each.message), std::string::npos)
        << each.story << "\n  found:    " << problem_of(each.xml, bases) << "\n  expected: " << each.message;
  }
}

}  // namespace
}  // namespace dorvo
