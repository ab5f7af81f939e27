#include "composition/intimation.h"

#include <algorithm>
#include <optional>

#include "tests/composition/dealers.h"

namespace dorvo::composition {
namespace {

const value::Null kNull;

struct Form {
  std::string name;
  std::unique_ptr<frame::Report> (*make)();
  int detail;  // section heights
  int footer;
  std::string nature;
  // Names of the boxes by role.
  std::string statement, signing, office, slip, signatory, office_nature;
};

const std::vector<Form> kForms = {
    {"Form1", frame::make_report<Form1>, 14292, 30, "Restaurant /Eating House /Restaurant & permit Room/ Hotel",
     "Field1", "txtName1", "Field3", "Field5", "txtSignatureName", "Field7"},
    {"Form2", frame::make_report<Form2>, 14100, 45, "Caterer", "Field1", "Field4", "txtName1", "", "Field3", "Field7"},
    {"Form3", frame::make_report<Form3>, 14205, 105, "Baker", "Field2", "txtName1", "Field5", "", "txtSignatureName",
     "Field7"},
    {"Form4", frame::make_report<Form4>, 14340, 45, "Retailer", "Field1", "txtName1", "Field5", "", "txtSignatureName",
     "Field7"},
    {"Form5", frame::make_report<Form5>, 14235, 0, "Dealer in Second-hand Motor Vehicle", "Field1", "Field3", "Field4",
     "", "txtSignatureName", "Field6"},
};

class IntimationTest : public PracticeTest {};

Columns dealer(value::Variant bst, value::Variant vat, value::Variant tin) {
  return {{"Name", "Shree Bakers"},
          {"SignatureName", "R. D. Kulkarni"},
          {"BSTNo", std::move(bst)},
          {"VATNo", std::move(vat)},
          {"TinVAT", std::move(tin)}};
}

TEST_F(IntimationTest, EveryRoleStandsInItsBox) {
  write_dealers({dealer("400001S1234", "", "")});
  for (const Form& form : kForms) {
    SCOPED_TRACE(form.name);
    Texts expected = {
        {"txtName", "Shree Bakers"},
        {form.statement, "Shree Bakers"},
        {form.signing, "Shree Bakers"},
        {form.office, "Shree Bakers"},
        {form.signatory, "R. D. Kulkarni"},
        {"txtSignature", "Proprietor"},
        {"txtStatementSignatory", "R. D. Kulkarni"},
        {"txtStatementStatus", "Proprietor"},
        {"txtBSTNo", "400001-S-1234"},
        {"txtBSTNo1", "400001-S-1234"},
        {"txtVATNo", ""},
        {"txtVATNo1", ""},
        {"txtNature", form.nature},
        {form.office_nature, form.nature},
    };
    if (!form.slip.empty()) expected[form.slip] = "Shree Bakers";
    // On Form2 that box is the office block's.
    if (form.name < "Form4") expected["txtName1"] = "For  Shree Bakers";

    const auto report = form.make();
    const Paper paper = print(*report, 1);
    EXPECT_EQ(paper.fields, expected);
    EXPECT_EQ(paper.pages, 1u);
    EXPECT_EQ(paper.messages, std::vector<std::string>());
  }
}

struct NumberCase {
  const char* what;
  value::Variant bst, vat, tin;
  std::optional<std::string> old_box, new_box;  // none: hidden
};

const std::vector<NumberCase> kNumbers = {
    {"old number alone", "400001S1234", "", "", "400001-S-1234", ""},
    {"old number, others NULL", "400001S1234", kNull, kNull, "400001-S-1234", ""},
    {"no number at all", "", "", "", "", ""},
    {"no number, all NULL", kNull, kNull, kNull, "", ""},
    {"a short number keeps its hyphens", "12", "", "", "12--", ""},
    {"new number", "400001S1234", "27123456789V", "", std::nullopt, "271234-5-6789V"},
    {"new number of one blank", "400001S1234", " ", kNull, std::nullopt, " --"},
    {"TIN over both", "400001S1234", "27123456789V", "27220001111V", "27220001111V", std::nullopt},
    {"TIN over the old number", "400001S1234", "", "27220001111V", "27220001111V", std::nullopt},
    {"TIN alone", kNull, kNull, "27220001111V", "27220001111V", std::nullopt},
};

std::optional<std::string> box(const Paper& paper, const std::string& name) {
  const auto found = paper.fields.find(name);
  return found == paper.fields.end() ? std::nullopt : std::optional(found->second);
}

TEST_F(IntimationTest, NumbersGiveWayToTheNewOneAndToTheTin) {
  std::vector<Columns> dealers;
  for (const auto& number : kNumbers) dealers.push_back(dealer(number.bst, number.vat, number.tin));
  write_dealers(dealers);
  for (const Form& form : kForms) {
    const auto report = form.make();  // one object for all runs: no run may see the one before
    for (std::size_t i = 0; i < kNumbers.size(); ++i) {
      SCOPED_TRACE(form.name + ", " + kNumbers[i].what);
      const Paper paper = print(*report, static_cast<int>(i) + 1);
      EXPECT_EQ(box(paper, "txtBSTNo"), kNumbers[i].old_box);
      EXPECT_EQ(box(paper, "txtBSTNo1"), kNumbers[i].old_box);
      EXPECT_EQ(box(paper, "txtVATNo"), kNumbers[i].new_box);
      EXPECT_EQ(box(paper, "txtVATNo1"), kNumbers[i].new_box);
    }
  }
}

TEST_F(IntimationTest, ABlankFormBearsNoDataButATin) {
  write_dealers({dealer("400001S1234", "27123456789V", ""), dealer("400001S1234", "27123456789V", "27220001111V")});
  for (const Form& form : kForms) {
    SCOPED_TRACE(form.name);
    const auto report = form.make();
    frame::basMain().BlankForm = false;
    const Paper whole = print(*report, 1);
    frame::basMain().BlankForm = true;
    const Paper blank = print(*report, 1);
    EXPECT_EQ(blank.fields, Texts());
    EXPECT_EQ(blank.labels, whole.labels);
    EXPECT_EQ(blank.rules, whole.rules);
    const Texts tin = {{"txtBSTNo", "27220001111V"}, {"txtBSTNo1", "27220001111V"}};
    EXPECT_EQ(print(*report, 2).fields, tin);
  }
}

struct FooterCase {
  bool preprinted, blank, footer;
  bool name_shows, form_shows, data_shows;
};

TEST_F(IntimationTest, FooterAndWordingFollowTheOptions) {
  const FooterCase cases[] = {
      {false, false, false, false, true, true}, {false, false, true, true, true, true},
      {true, false, false, false, false, true}, {true, false, true, true, false, true},
      {true, true, false, false, false, false}, {true, true, true, true, false, false},
      {false, true, true, true, true, false},
  };
  write_dealers({dealer("400001S1234", "", "")});
  frame::basMain().UserName = "A. B. Joshi & Co.";
  for (const Form& form : kForms) {
    const auto report = form.make();
    for (const auto& options : cases) {
      SCOPED_TRACE(form.name + (options.preprinted ? " preprinted" : "") + (options.blank ? " blank" : "") +
                   (options.footer ? " footer" : ""));
      frame::basMain().preprinted = options.preprinted;
      frame::basMain().BlankForm = options.blank;
      frame::basMain().ShowFooter = options.footer;
      const Paper paper = print(*report, 1);
      Texts footer;
      if (options.form_shows) footer = {{"lbl", "Pelmar Computation"}, {"lblpageno", "1"}};
      if (options.name_shows) footer["lblName"] = "A. B. Joshi & Co.";
      Texts found;
      for (const char* name : {"lbl", "lblName", "lblpageno"}) {
        if (paper.labels.contains(name)) found[name] = paper.labels.at(name);
      }
      EXPECT_EQ(found, footer);
      EXPECT_EQ(paper.labels.size() > footer.size(), options.form_shows);
      EXPECT_EQ(paper.rules > 0, options.form_shows);
      EXPECT_EQ(paper.fields.size() > 0, options.data_shows);
    }
  }
}

TEST_F(IntimationTest, ADealerWithoutNameAndSignatureStillPrints) {
  write_dealers({{{"Name", kNull}, {"SignatureName", kNull}, {"SignatureID", kNull}, {"BSTNo", kNull}}});
  for (const Form& form : kForms) {
    SCOPED_TRACE(form.name);
    Paper paper = print(*form.make(), 1);
    if (form.name < "Form4") {
      EXPECT_EQ(paper.fields["txtName1"], "For  ");
    }
    for (const auto& [name, text] : paper.fields) {
      if (name == "txtName1" || name == "txtNature" || name == form.office_nature) continue;
      EXPECT_EQ(text, "") << name;
    }
    EXPECT_EQ(paper.pages, 1u);
  }
}

TEST_F(IntimationTest, AnUnknownDealerGivesNoPage) {
  write_dealers({dealer("400001S1234", "", "")});
  for (const Form& form : kForms) {
    const auto report = form.make();
    EXPECT_EQ(print(*report, 1).pages, 1u) << form.name;
    EXPECT_EQ(print(*report, 2).pages, 0u) << form.name;
  }
}

// A name of the longest that the host keeps is made smaller, never cut and never on a second page.
TEST_F(IntimationTest, TheLongestNameFits) {
  std::string name;
  while (name.size() + 10 < 250) name += "Vishwakarma ";
  const Columns latin = {{"Name", name}, {"SignatureName", "Shri Venkatanarasimharajuvaripeta Chandrasekharan Iyer"}};
  const Columns mixed = {{"Name", "श्री सिद्धिविनायक Caterers आणि भोजनालय (Dadar West) Private Limited"},
                         {"SignatureName", "रमेश दत्तात्रय कुलकर्णी"}};
  write_dealers({latin, mixed});
  for (const Form& form : kForms) {
    const auto report = form.make();
    for (int key : {1, 2}) {
      const Paper paper = print(*report, key);
      EXPECT_EQ(paper.pages, 1u) << form.name;
      EXPECT_EQ(paper.messages, std::vector<std::string>()) << form.name;
    }
  }
}

TEST_F(IntimationTest, SectionsHaveTheHeightsOfTheForm) {
  for (const Form& form : kForms) {
    SCOPED_TRACE(form.name);
    const auto layout = engine::stored_layout(form.name);
    std::vector<std::pair<std::string, int>> sections;
    for (const auto& section : layout->sections) sections.emplace_back(section.name, section.height);
    const std::vector<std::pair<std::string, int>> expected = {
        {"PageHeader", 0}, {"Detail", form.detail}, {"PageFooter", form.footer}};
    EXPECT_EQ(sections, expected);
  }
}

// The exact words that the form must bear, whatever else its layout says.
TEST_F(IntimationTest, StatutoryWordsStand) {
  write_dealers({dealer("400001S1234", "", "")});
  for (const Form& form : kForms) {
    std::vector<std::string> words = {
        "Form-" + form.name.substr(4),
        "(See section 42 of the Maharashtra Value Added Tax Act, 2002)",
        "Intimation for choosing an option to pay tax under the scheme of composition under the",
        "Name of the dealer",
        "R.C. No. under the M.V.A.T. Act, 2002",
        "Nature of business",
        "Further, I hereby undertake to abide by the terms and conditions governing the composition scheme.",
        "Signature",
        "Status of the signatory",
        "For office use only",
        "Signature and Stamp Of Receiving Officer",
        " ACKNOWLEDGEMENT",
        "Received intimation for choosing an option to pay tax under the scheme of composition.",
    };
    if (form.name == "Form1") words.insert(words.end(), {"Class of dealers", "Restaurant / Club / Hotel"});
    const Paper paper = print(*form.make(), 1);
    for (const auto& word : words) {
      const bool found = std::ranges::any_of(paper.labels, [&](const auto& label) { return label.second == word; });
      EXPECT_TRUE(found) << form.name << ": " << word;
    }
  }
}

}  // namespace
}  // namespace dorvo::composition
