// What reads like something that is masked elsewhere: kept, masked after all, or told.
#include "documents/leftovers.hpp"

#include <gtest/gtest.h>

#include "tests/documents/support.hpp"
#include "tests/support/notation.hpp"

namespace {

namespace anonymization = core::anonymization;
using anonymization::Offset;

// "{[机构1]|某某公司}": masked. "<某某>": kept on purpose. The answer has a letter for
// each leftover: K kept, M missed, A alike, with the text that it covers.
std::string left_of(std::string_view marked) {
  std::u32string text;
  anonymization::Stretches kept;
  std::vector<anonymization::MaskedStretch> masked;
  const auto source = test::u32(marked);
  for (std::size_t i = 0; i < source.size(); ++i) {
    if (source[i] == U'{') {
      const auto bar = source.find(U'|', i);
      const auto end = source.find(U'}', i);
      const auto start = static_cast<Offset>(text.size());
      text.append(source, bar + 1, end - bar - 1);
      masked.push_back(
          {start, static_cast<Offset>(text.size()), source.substr(i + 1, bar - i - 1)});
      i = end;
    } else if (source[i] == U'<') {
      kept.emplace_back(static_cast<Offset>(text.size()), 0);
    } else if (source[i] == U'>') {
      kept.back().second = static_cast<Offset>(text.size());
    } else {
      text += source[i];
    }
  }
  std::string out;
  for (const auto& left : documents::leftovers(text, masked, kept)) {
    out += out.empty() ? "" : " ";
    out += "KMA"[static_cast<std::size_t>(left.kind)];
    out += ":" + test::u8(std::u32string_view(text).substr(left.start, left.end - left.start));
  }
  return out;
}

TEST(Leftovers, AreToldApart) {
  struct Case {
    const char* why;
    const char* text;
    const char* left;
  };
  const Case cases[] = {
      {"都遮住了", "{[机构1]|楚禾食品}与{[机构1]|楚禾食品}", ""},
      {"名字在更长的词里", "{[机构1]|楚禾食品}，《楚禾食品厂区规定》", "M:楚禾食品"},
      {"特意留下", "{[机构1]|楚禾食品}，<楚禾食品>", "K:楚禾食品"},
      {"特意留下的一部分", "{[ADDRESS1]|上海市}，<上海市仲裁委员会>", "K:上海市"},
      {"三个字的名字可能是碰巧", "{[NAME1]|张伟民}，张伟民间借贷", "A:张伟民"},
      {"一两个字只在词边算", "{[NAME1]|张伟}，张伟民。张伟。", "A:张伟"},
      {"地名、金额另有所指", "{[ADDRESS1]|浦东新区}，浦东新区人民法院", "A:浦东新区"},
      {"英文要整个词", "{[机构1]|Blue Harbor}, Blue Harbors, Blue Harbor",
       "A:Blue Harbor M:Blue Harbor"},
      {"一个英文词可能是普通词", "{[NAME1]|Grace} has a Grace Period", "A:Grace"},
      {"空格在别处就是别的话", "{[机构1]|Aman Resorts}: A man resorts, Am anResorts",
       "A:Am anResorts"},
      {"换行照样算", "{[机构1]|Blue Harbor} Blue\n Harbor", "M:Blue\n Harbor"},
      {"号码和邮箱", "{[PHONE1]|13812345678}、{[EMAIL1]|a@b.example}；13812345678、a@b.example",
       "M:13812345678 M:a@b.example"},
      {"号码的一部分不算", "{[PHONE1]|13812345678}；138123456789", ""},
      {"重叠的取最长", "{[机构1]|华信科技}{[机构1]|华信科技集团}，华信科技集团", "M:华信科技集团"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(left_of(c.text), c.left);
  }
}

// Finds the first mention alone.
class FindingOnce : public anonymization::Analyzer {
 public:
  std::vector<anonymization::RecognizerResult> analyze(std::u32string_view text,
                                                       std::string_view) const override {
    const auto at = static_cast<Offset>(text.find(U"lin@example.com"));
    return {{"EMAIL_ADDRESS", at, at + 15, 0.9}};
  }
};

TEST(Leftovers, AreMaskedOrToldByStory) {
  const auto bytes =
      test::docx("<w:p><w:r><w:t>lin@example.com；lin@example.com</w:t></w:r></w:p>");
  const auto document = documents::read_document(bytes);
  const auto masked = anonymization::anonymize_document(document->text(), FindingOnce(), "zh");
  const auto out = document->write(masked);
  EXPECT_EQ(test::body_of(documents::read_package(out)),
            "<w:p><w:r><w:t xml:space=\"preserve\">[EMAIL1]；[EMAIL1]</w:t></w:r></w:p>");
  EXPECT_EQ(document->report().warnings,
            std::vector<std::string>{
                "names that the analysis left were masked as they are elsewhere: 1 (body 1)"});

  const auto other = documents::read_document(bytes);
  const auto second = static_cast<Offset>(other->text().rfind(U"lin@"));
  const anonymization::Overrides overrides{{{second, second + 15}}, {}};
  other->set_kept([&] { return overrides.keep; });
  const auto kept =
      anonymization::anonymize_document(other->text(), FindingOnce(), "zh", "contract_default",
                                        anonymization::Aliases::SEPARATE, overrides);
  EXPECT_NE(test::body_of(documents::read_package(other->write(kept))).find("；lin@example.com"),
            std::string::npos);
  EXPECT_EQ(other->report().warnings,
            std::vector<std::string>{
                "texts that read like a masked one were left on purpose: 1 (body 1)"});
}

}  // namespace
