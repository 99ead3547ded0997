#include <gtest/gtest.h>

#include "tests/recognition/recognizing.hpp"

namespace test {
namespace {

TEST(LatinOrganizations, Companies) {
  constexpr Case cases[] = {
      {"comma before the form", "between {ORGANIZATION|Bramblewick Robotics, Inc.}, a Delaware"},
      {"two companies",
       "between {ORGANIZATION|Harrow Logistics Limited} and "
       "{ORGANIZATION|Tallgrass Systems, Inc.} ends"},
      {"place in brackets", "Client: {ORGANIZATION|Greywether Capital (Hong Kong) Limited}（"},
      {"in capitals", "{ORGANIZATION|SKJÆRGÅRD HOLDING ASA} guarantees"},
      {"branch", "{ORGANIZATION|Yongdu Bank Co., Ltd., Ningbo Beilun Sub-branch}, account"},
      {"role words", "the Company, the Supplier, a Target Company Limited by shares"},
      {"a heading", "PAYABLE AS FOLLOWS"},
      {"a form within a word", "SOFTWARE-AS-A-SERVICE SUBSCRIPTION AGREEMENT"},
      {"abbreviation in brackets", "甲方：{ORGANIZATION|Chingyu Beverages (H.K.) Limited}（"},
      {"traders who live there", "from {ORGANIZATION|Goldleaf Spice Traders} of Kochi only"},
      {"the role of a party", "Hirer: x\nThe Obligor accepts. The Obligor pays.\nObligor\ty"},
      {"紧贴汉字", "由{ORGANIZATION|Vantrel Dynamik GmbH}提供"},
      {"short form",
       "{ORGANIZATION|Oakhaven Precision Components LLC}. "
       "{ORGANIZATION|Oakhaven} may, mail x@oakhaven.com"},
      {"an everyday word is no short form",
       "{ORGANIZATION|Summit Capital Ltd.} at the summit. "
       "Summit of"},
  };
  expect_found("ORGANIZATION", cases);
}

TEST(LatinOrganizations, CourtsAndBanks) {
  constexpr Case cases[] = {
      {"court of a place", "the {ORGANIZATION|High Court of Singapore} on"},
      {"university", "from the {ORGANIZATION|Technical University of Vardøya};"},
      {"acronym by definition",
       "{ORGANIZATION|Baltic Arbitration Association} (the "
       "\"{ORGANIZATION|BAA}\"). {ORGANIZATION|BAA} rules"},
      {"generic", "the Bank, the Issuing Bank, a competent Court, the Arbitration Commission"},
  };
  expect_found("ORGANIZATION", cases);
}

TEST(LatinPersons, TitlesLabelsRoles) {
  constexpr Case cases[] = {
      {"title", "Mr. {PERSON|John A. Smith} or Ms. {PERSON|Desrosiers}'s counsel"},
      {"particles", "Dear Mr. {PERSON|Khalid bin Salem Al-Harthy}, Ms {PERSON|van Oostrum}"},
      {"label", "Name: {PERSON|Tobias Okonkwo-Hale}\nTitle: Managing Member"},
      {"role behind", "{PERSON|Ruth Ann Calloway}, Managing Member"},
      {"Chinese label", "订单经理 {PERSON|Annegret Vollmer}。"},
      {"both scripts", "{PERSON|Cen Lixia} ({PERSON|岑丽霞}), +86 186 5712 0934"},
      {"blank to fill", "Name: ____________\nTitle: Director"},
      {"capitals of the contract", "General Counsel, Effective Date, Managing Director"},
      {"a firm", "Name: Wrexley Tallis LLP"},
      {"title that is no street", "Dr. {PERSON|Reinhild Mögling}, Freiburg, 27.03.2025"},
      {"noble particle", "The contact is {PERSON|Friederike v. Stetten}, at"},
  };
  expect_found("PERSON", cases);
}

TEST(LatinPlaces, AddressesAndPlaces) {
  constexpr Case cases[] = {
      {"street to country",
       "offices at {LOCATION|4417 Quarry Mill Road, Dayton, OH 45424, USA} (\"x\")"},
      {"number behind the street", "AS, {LOCATION|Strandgata 41, 6508 Kristiansund, Norway}"},
      {"a person before it", "{LOCATION|10 Kallang Riverwalk, #14-08, Singapore 339411}"},
      {"a date behind it",
       "to {LOCATION|Warehouse 5, No. 288 Fute North Road, Pudong New Area, "
       "Shanghai} by 15 May 2025"},
      {"country with an article",
       "at {LOCATION|Keizerskade 140, 1015 CX Amsterdam, the Netherlands}. The"},
      {"behind the number of a register",
       "UEN 202018842M, {LOCATION|71 Robinson Walk, #14-01, Singapore 068895} (the"},
      {"behind its inhabitant",
       "and Graham Ellerby of {LOCATION|Rosehill Cottage, 8 Mill Lane, Fowey}"},
      {"city and state", "in {LOCATION|Wilmington, Delaware}."},
      {"a list of cities", "in {LOCATION|Hamburg}, {LOCATION|Oslo} and {LOCATION|London}"},
      {"rules named after places", "New York Convention, Hamburg Rules"},
      {"currency", "US$250,000"},
      {"no address", "Section 5, Article 9, Schedule 2"},
  };
  expect_found("LOCATION", cases);
}

}  // namespace
}  // namespace test
