#include <gtest/gtest.h>

#include "tests/recognition/recognizing.hpp"

namespace {

using test::Case;

TEST(UnexplainedNames, Organizations) {
  constexpr Case cases[] = {
      {"a word that is none", "Cover is placed with {ORGANIZATION|Pagewell} until May."},
      {"everyday words in capitals, without an article",
       "he is a director of {ORGANIZATION|Blue Gum Haulage} and of no other firm"},
      {"and its acts", "In that case {ORGANIZATION|Tecnoperizie} shall inspect the machines."},
      {"letters", "The loan from {ORGANIZATION|KZQB} is repaid on demand."},
      {"a party by its role",
       "between {ORGANIZATION|Harbor Point Logistics} (\"Customer\") and us"},
      {"an alias behind the name, and everywhere",
       "{ORGANIZATION|Ems Drucktechnik GmbH} ({ORGANIZATION|E&B}) pays. The offer of "
       "{ORGANIZATION|E&B} stands."},
      {"letters that stand for a term",
       "Key Staff Turnover (\"KSTX\") is measured. From KSTX we learn."},
      {"a list of founders", "stays with {ORGANIZATION|Harrow, Fynch & Dahl}; call us"},
      {"the brand of a company that was found",
       "by {ORGANIZATION|Verdania Therapeutics plc}. {ORGANIZATION|Verdania} appoints nobody."},
      {"a form in small letters", "an account with {ORGANIZATION|Weserbank Holtorf eG}."},
      {"in capitals", "CERTIFICATE OF {ORGANIZATION|VINAKIEM} FOR EACH LOT\n"},
      {"in Chinese", "报告由{ORGANIZATION|Truelane}出具，系统采用Zenquix和Plontaris平台。"},
      {"terms of the contract",
       "the Base Purchase Price, by Net Sales, under Good Industry Practice, to Key Personnel"},
      {"terms behind an article anywhere",
       "from Green Power. The Green Power is what the plant feeds into the grid."},
      {"written small elsewhere", "with Silver Birch. A silver birch is a tree."},
      {"rules, days, languages, techniques",
       "by the Hague-Visby Rules, on Saturday, in Greek, with Kubernetes, via SFTP, to IBAN DE1"},
      {"words made of ordinary ones", "from Workspaces, by Dewatering and with SLAs, per KPIs"},
      {"headings", "3. Limitation Periods and Carve-Outs\n\nGOVERNING LAW AND FORUM\n"},
      {"a text in another language",
       "la presente garantía por parte del Banco se rige por las leyes de la Provincia Oriental"},
  };
  test::expect_found("ORGANIZATION", cases);
}

TEST(UnexplainedNames, Places) {
  constexpr Case cases[] = {
      {"a small city", "The gearbox is inspected in {LOCATION|Lecco} and shipped."},
      {"a county", "the roads of {LOCATION|Kajiado County} are closed"},
  };
  test::expect_found("LOCATION", cases);
}

}  // namespace
