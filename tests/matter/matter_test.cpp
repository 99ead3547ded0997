// One number for one entity in all documents of a matter.
#include "core/matter/matter.hpp"

#include <functional>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "core/matter/matter_file.hpp"
#include "core/restore/restore.hpp"
#include "core/restore/sealed_mapping.hpp"
#include "tests/support/notation.hpp"

namespace {

namespace anonymization = core::anonymization;
namespace restore = core::restore;
using core::matter::Matter;
using core::matter::read_mapping_of;
using core::matter::read_matter;
using core::matter::write_matter;
using nlohmann::json;

// A document that was masked by itself: "甲方：{[机构1]|某某公司}".
struct Own {
  std::u32string original;
  anonymization::AnonymizedDocument document;
};

Own masked_alone(std::string_view marked) {
  const auto parsed = test::parse_replacements(marked);
  anonymization::MaskedText masked(parsed.text);
  masked.splice_right_to_left(anonymization::edits_of(parsed.replacements));
  anonymization::AnonymizedDocument document;
  document.language = "zh";
  document.replacements = parsed.replacements;
  for (const auto& r : parsed.replacements) {
    document.mapping.push_back(
        {r.placeholder, parsed.text.substr(static_cast<std::size_t>(r.start),
                                           static_cast<std::size_t>(r.end - r.start))});
  }
  document.placements = masked.take_placements();
  document.text = masked.take_text();
  return {parsed.text, std::move(document)};
}

// Takes the document into the matter; returns it as it is masked there.
std::string add(Matter& matter, std::string_view marked) {
  const auto own = masked_alone(marked);
  const auto document = matter.numbered(own.document, own.original);
  auto mapping = restore::make_mapping(document, restore::Occurrences::ALL);
  auto text = test::u8(document.text);
  for (std::size_t i = 0; i < document.mapping.size(); ++i) {
    EXPECT_EQ(document.mapping[i].placeholder, document.replacements[i].placeholder);
    EXPECT_NE(document.text.find(document.mapping[i].placeholder), std::u32string::npos);
  }
  matter.add({"a.txt", document.language, restore::sha256_hex(text)}, mapping);
  return text;
}

TEST(Matter, NumbersAcrossDocuments) {
  struct Case {
    const char* why;
    std::vector<const char*> documents;
    const char* last;  // as it is masked behind the others
  };
  const Case cases[] = {
      {"首份文件的编号不变",
       {"{[机构2]|上海蓝鲸软件有限公司}，{[机构1]|北京华信科技有限公司}，{[DATE1]|2024年}"},
       "[机构2]，[机构1]，[DATE1]"},
      {"同名同号，新的接着编",
       {"{[机构1]|北京华信科技有限公司}，{[NAME1]|王建国}",
        "{[机构1]|上海蓝鲸软件有限公司}，{[机构2]|北京华信科技有限公司}，{[NAME1]|李明哲}"},
       "[机构2]，[机构1]，[NAME2]"},
      {"规范写法相同即同名",
       {"{[机构1]|北京华信（集团）有限公司}", "{[机构1]|北京华信 (集团) 有限公司}"},
       "[机构1]"},
      {"金额只看数字，文字照留",
       {"{人民币[MONEY1]元|人民币100元}，{[MONEY2]|200}", "{约[MONEY1]元|约200元}"},
       "约[MONEY2]元"},
      {"尾号卡号没有编号",
       {"{[CARD_****1234]|99991234}", "{[CARD_****1234]|88881234}"},
       "[CARD_****1234]"},
      // Short names.
      {"简称随全称",
       {"{[机构1]|甲乙丙有限公司}", "{[机构1]|北京华信科技有限公司}，{[机构1]|华信科技}",
        "{[机构1]|华信科技}"},
       "[机构2]"},
      {"先有简称，后有全称",
       {"{[机构1]|华信科技}", "{[机构1]|北京华信科技有限公司}，{[机构1]|华信科技}"},
       "[机构1]，[机构1]"},
      {"另一家公司用同一简称，不是一家",
       {"{[机构1]|北京华信科技有限公司}，{[机构1]|华信科技}",
        "{[机构1]|上海华信科技有限公司}，{[机构1]|华信科技}"},
       "[机构2]，[机构2]"},
      {"两家公司有同一简称，单独出现时谁都不是",
       {"{[机构1]|北京华信科技有限公司}，{[机构1]|华信科技}",
        "{[机构1]|上海华信科技有限公司}，{[机构1]|华信科技}", "{[机构1]|华信科技}"},
       "[机构3]"},
      {"同上，再次出现仍是同一编号",
       {"{[机构1]|北京华信科技有限公司}，{[机构1]|华信科技}",
        "{[机构1]|上海华信科技有限公司}，{[机构1]|华信科技}", "{[机构1]|华信科技}",
        "{[机构1]|华信科技}"},
       "[机构3]"},
      {"与全称写法无关的简称不跨文件",
       {"{[机构1]|北京华信科技有限公司}，{[机构1]|出租人}", "{[机构1]|出租人}"},
       "[机构2]"},
      {"一份文件里分开的，不因别的文件合并",
       {"{[机构1]|北京华信科技有限公司}，{[机构1]|华信科技}",
        "{[机构1]|华信科技}，{[机构2]|北京华信科技有限公司}"},
       "[机构2]，[机构1]"},
      // Persons.
      {"头衔不跨文件认人", {"{[NAME1]|王建国}，{[NAME1]|王经理}", "{[NAME1]|王经理}"}, "[NAME2]"},
      {"only the full name tells who it is",
       {"{[NAME1]|John Smith}, {[NAME1]|Mr. Smith}", "{[NAME1]|Mr. Smith}, {[NAME2]|JOHN SMITH}"},
       "[NAME2], [NAME1]"},
      {"a shared short form does not make two persons one",
       {"{[NAME1]|John A. Smith}, {[NAME1]|John Smith}",
        "{[NAME1]|John B. Smith}, {[NAME1]|John Smith}"},
       "[NAME2], [NAME2]"},
      // Text of a document that reads like a placeholder takes no number.
      {"文中原有的占位符不占编号",
       {"[机构7]与{[机构1]|甲乙丙有限公司}", "{[机构1]|丁戊己有限公司}"},
       "[机构2]"},
      {"astral characters in front",
       {"{[机构1]|甲乙丙有限公司}", "😀𠀀{[机构9]|甲乙丙有限公司}，{[机构1]|丁戊己有限公司}"},
       "😀𠀀[机构1]，[机构2]"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    Matter matter;
    std::string last;
    for (const auto* document : c.documents) {
      last = add(matter, document);
      // What was written is read again between any two documents.
      matter = read_matter(write_matter(matter));
    }
    EXPECT_EQ(last, c.last);
  }
}

TEST(Matter, ADocumentThatComesAgainChangesNothing) {
  Matter matter;
  const auto first = add(matter, "{[机构1]|北京华信科技有限公司}（{[机构1]|华信科技}）");
  add(matter, "{[机构1]|上海蓝鲸软件有限公司}");
  const auto before = write_matter(matter);
  EXPECT_EQ(add(matter, "{[机构1]|北京华信科技有限公司}（{[机构1]|华信科技}）"), first);
  EXPECT_EQ(write_matter(matter), before);
  // The same masked text of other originals is another document.
  add(matter, "{[机构1]|北京华信科技有限公司}（{[机构1]|北京华信 科技有限公司}）");
  EXPECT_EQ(matter.documents().size(), 3U);
}

TEST(Matter, LeadsBackToEachDocument) {
  const char* documents[] = {
      "甲方：{[机构1]|北京华信科技有限公司}（盖章）",
      "甲方：{[机构1]|北京华信 科技有限公司}（盖章）",
      "甲方：{[机构2]|上海蓝鲸软件有限公司}（盖章），{[机构1]|华信科技}，{[机构1]|北京华信科技有限公司}",
  };
  Matter matter;
  std::vector<std::string> masked;
  for (const auto* document : documents) masked.push_back(add(matter, document));
  const auto file = write_matter(matter);
  EXPECT_EQ(masked[0], masked[1]);
  const auto restored = [&](const std::string& text, const std::string& hash) {
    const auto mapping = read_mapping_of(file, hash);
    const auto edited = test::u32(text);
    return test::u8(
        restore::restored_text(edited, mapping, restore::find_restorable(edited, mapping)));
  };
  const auto original = test::u8(test::parse_replacements(documents[2]).text);
  EXPECT_EQ(restored(masked[2], restore::sha256_hex(masked[2])), original);
  // Edited, it is restored by what stands around the placeholders.
  EXPECT_EQ(restored("（一）" + masked[2], ""), "（一）" + original);
  // Which of the two it was cannot be told: the mapping of all documents.
  EXPECT_EQ(read_mapping_of(file, restore::sha256_hex(masked[0])), restore::read_mapping(file));
}

TEST(Matter, KnownNamesAreFoundInOtherDocuments) {
  Matter matter;
  add(matter,
      "{[机构1]|北京华信科技有限公司}，{[机构1]|华信科技}，{[NAME1]|王建国}，{[NAME2]|张伟}，"
      "{[NAME3]|Ann Lee}，{[地址1]|和平路1号}");
  const auto text = test::u32(
      "𠀀北京华信科技有限公司与华信科技，王建国，张伟大，Ann Lee，Joann Leeds，和平路1号");
  test::Marked found{text, matter.known_hits(text)};
  EXPECT_EQ(test::render(found),
            "𠀀{ORGANIZATION|北京华信科技有限公司}与华信科技，{PERSON|王建国}，张伟大，{PERSON|Ann "
            "Lee}，Joann Leeds，和平路1号");
}

TEST(MatterFile, RefusesWhatItCannotRead) {
  Matter matter;
  add(matter, "{[机构1]|北京华信科技有限公司}");
  const auto changed = [&](const std::function<void(json&)>& change) {
    auto object = json::parse(write_matter(matter));
    change(object);
    return object.dump();
  };
  struct Case {
    std::string bytes;
    const char* says;
  };
  const Case cases[] = {
      {"{\"a\": 1}", "no mapping file"},
      {write_matter(matter).substr(0, 300), "no mapping file of veildoc, or a damaged one"},
      {restore::write_mapping(restore::make_mapping(masked_alone("{[机构1]|甲}").document)),
       "the mapping of a single document"},
      {changed([](json& o) { o["documents"] = 1; }), "\"documents\" is no list"},
      {changed([](json& o) { o["documents"] = json::array(); }), "entry 1: of no document"},
      {changed([](json& o) { o["documents"][0].erase("name"); }), "document 1: no string \"name\""},
      {changed([](json& o) { o["entries"][0].erase("occurrences"); }), "entry 1: no occurrences"},
      {changed([](json& o) { o["entries"][0]["occurrences"][0]["document"] = 1; }),
       "\"document\" is no such number"},
      {changed([](json& o) { o["entries"][0]["occurrences"][0]["surface"] = 1; }),
       "\"surface\" is no such number"},
      {restore::seal_mapping(write_matter(matter), "p", {1, 8192}), "sealed"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.says);
    std::string says = "nothing";
    try {
      read_matter(c.bytes);
    } catch (const restore::MappingError& e) {
      says = e.what();
    }
    EXPECT_NE(says.find(c.says), std::string::npos) << says;
  }
}

}  // namespace
