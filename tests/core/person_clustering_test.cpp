#include "core/person_clustering.hpp"

#include <gtest/gtest.h>

#include "tests/support/notation.hpp"

namespace core {
namespace {

using anonymization::Offset;
using anonymization::RecognizerResult;

std::string key(std::string_view name) {
  const auto text = test::u32(name);
  return test::u8(person_identity_key(text, 0, static_cast<Offset>(text.size())));
}

// The numbers of the marked names, as digits; - for a name without a number.
std::string numbers(const std::string& marked) {
  const auto doc = test::parse(marked);
  const auto found = person_span_to_placeholder_num(doc.text, doc.results);
  std::string out;
  for (const auto& r : doc.results) {
    const auto number = found.find({r.start, r.end});
    out += number == found.end() ? "-" : std::to_string(number->second);
  }
  return out;
}

TEST(PersonKey, SpellingsOfOnePerson) {
  struct {
    const char* why;
    std::vector<const char*> same;
  } const rows[] = {
      {"空格", {"张伟", "张 伟", " 张\u3000伟\n", "张\u200B伟", "“张伟”，"}},
      {"称谓与职务",
       {"张伟", "张伟先生", "张伟 女士", "律师张伟", "张伟总经理", "张伟总", "张伟博士教授",
        "总经理张伟主任", "Mr. 张伟"}},
      {"复姓", {"欧阳锋", "欧阳 锋先生"}},
      {"繁体", {"陳大文", "陳大文先生", "律師陳大文"}},
      {"译名的间隔号",
       {"约翰·史密斯", "约翰•史密斯", "约翰・史密斯", "约翰‧史密斯", "约翰∙史密斯", "约翰⋅史密斯",
        "约翰･史密斯", "约翰.史密斯", "约翰．史密斯", "约翰 史密斯先生"}},
      {"缩写与译名", {"J·K·罗琳", "J.K.罗琳", "Ｊ. Ｋ. 罗琳女士"}},
      {"case, order, titles",
       {"John A. Smith", "JOHN A SMITH", "SMITH, John A.", "Mr. John A. Smith", "Mr John A Smith’s",
        "Smith, Dr. John A.", "John A. Smith, Ph.D.", "John A. Smith, M.D.", "John A. Smith Ph. D.",
        "Ｊｏｈｎ　Ａ．　Ｓｍｉｔｈ", "John A. Smith先生"}},
      {"apostrophes", {"Pat O'Brien", "Pat O’Brien", "O`BRIEN, Pat"}},
      {"hyphens", {"Jean-Luc Roy", "Jean‐Luc Roy", "Jean‑Luc Roy"}},
      {"initials", {"J.D. Roe", "J. D. Roe", "Roe, J.D."}},
      {"generation", {"John Roe Jr.", "John Roe, Jr.", "Roe, John, Jr"}},
      {"case folding", {"Hans Groß", "HANS GROSS"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_NE(key(row.same.front()), "");
    for (const char* spelling : row.same) EXPECT_EQ(key(spelling), key(row.same.front()));
  }
}

TEST(PersonKey, PersonsWhoStayApart) {
  struct {
    const char* why;
    std::vector<const char*> different;
  } const rows[] = {
      {"只有姓氏时保留称谓", {"王先生", "王女士", "王", "王总", "Mr. 王"}},
      {"复姓也只是姓氏", {"欧阳先生", "欧阳女士", "欧阳", "欧 阳小姐"}},
      {"译名的姓", {"布朗先生", "布朗女士", "安德烈耶夫先生", "安德烈耶夫女士"}},
      {"a surname alone keeps its title",
       {"Mr. Smith", "Ms. Smith", "Dr. Smith", "Smith", "Smith先生"}},
      {"so do initials", {"Mr. J. Smith", "Mrs. J. Smith", "J. Smith"}},
      {"middle initials", {"John A. Smith", "John B. Smith", "John Smith"}},
      {"generations", {"John Smith", "John Smith Jr.", "John Smith III"}},
      {"a surname that is no degree", {"Jack Ma", "Jack"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    for (std::size_t i = 0; i < row.different.size(); ++i) {
      for (std::size_t j = 0; j < i; ++j) {
        EXPECT_NE(key(row.different[i]), key(row.different[j]))
            << row.different[i] << " / " << row.different[j];
      }
    }
  }
}

TEST(PersonKey, EmptyWithoutAName) {
  for (const char* none : {"", "  ", "____", "——", "123", "先生", "Mr.", "，。"}) {
    EXPECT_EQ(key(none), "") << none;
  }
  EXPECT_EQ(person_identity_key(U"甲张伟乙", 1, 3), U"张伟");
  EXPECT_EQ(person_identity_key(U"张伟", -3, 99), U"张伟");
}

TEST(PersonNumbers, SpellingsShareANumber) {
  struct {
    const char* why;
    const char* names;
    const char* numbers;
  } const rows[] = {
      {"按首次出现编号", "{P|张伟}、{P|李娜}、{P|张 伟先生}、{P|王芳}", "1213"},
      {"没有姓名的不编号", "{P|张伟}、{P|____}、{P|李娜}", "1-2"},
      {"王先生与王女士", "{P|王先生}、{P|王女士}", "12"},
      // Middle names.
      {"one with an initial", "{P|John Smith}; {P|John A. Smith}", "11"},
      {"a second person", "{P|John Smith}; {P|John A. Smith}; {P|John B. Smith}", "123"},
      {"the initial and its name", "{P|John A. Smith}; {P|John Andrew Smith}; {P|John Smith}",
       "111"},
      {"an initial of two names", "{P|John A. Li}; {P|John Amos Li}; {P|John Alan Li}", "123"},
      {"two middle initials, each with its name",
       "{P|John A. Li}; {P|John Amos Li}; {P|John B. Li}; {P|John Bob Li}", "1122"},
      {"an initial of another name", "{P|John A. Li}; {P|John Bob Li}; {P|John Li}", "123"},
      {"a syllable is no initial", "{P|Li Xiao Ming}; {P|Li Ming}", "12"},
      {"nor does an initial skip one", "{P|Li Xiao Ming}; {P|L. Ming}; {P|W. Xiao Li}; {P|Wu Li}",
       "1234"},
      {"another generation", "{P|John Smith Jr.}; {P|John A. Smith}", "12"},
      // First names.
      {"a single candidate", "{P|J. Smith}; {P|John Smith}; {P|John A. Smith}", "111"},
      {"two candidates", "{P|J. Smith}; {P|John Smith}; {P|James Smith}", "123"},
      {"one candidate, two initials", "{P|J. A. Smith}; {P|J. B. Smith}; {P|John Smith}", "123"},
      {"two initials before one name",
       "{P|J. Smith}; {P|J. A. Smith}; {P|J. B. Smith}; {P|John Q. Smith}", "1234"},
      {"the middle initial decides", "{P|J. A. Smith}; {P|John A. Smith}; {P|James B. Smith}",
       "112"},
      {"the middle initial differs", "{P|J. C. Smith}; {P|John A. Smith}", "12"},
      {"another last name", "{P|J. Smith}; {P|John Smyth}", "12"},
      {"a surname alone", "{P|Smith}; {P|John Smith}; {P|Mr. Smith}", "123"},
      // Titles that initials keep.
      {"one title", "{P|Mr. J. Smith}; {P|J. Smith}; {P|John Smith}", "111"},
      {"two titles", "{P|Mr. J. Smith}; {P|Mrs. J. Smith}; {P|John Smith}", "123"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_EQ(numbers(row.names), row.numbers);
  }
}

TEST(PersonNumbers, CountInTextOrderWhateverTheListsOrder) {
  const std::vector<RecognizerResult> persons = {{"PERSON", 3, 5, 1}, {"PERSON", 0, 2, 1}};
  const auto found = person_span_to_placeholder_num(U"张伟和李娜", persons);
  EXPECT_EQ(found.at({0, 2}), 1);
  EXPECT_EQ(found.at({3, 5}), 2);
}

}  // namespace
}  // namespace core
