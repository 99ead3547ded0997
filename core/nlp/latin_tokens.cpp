#include "core/nlp/latin_tokens.hpp"

#include <string>

#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

constexpr auto CONNECTIVES =
    text::words({U"of",  U"and", U"de",  U"del", U"della", U"di",    U"du", U"des", U"la",  U"le",
                 U"van", U"der", U"den", U"von", U"und",   U"et",    U"y",  U"e",   U"for", U"the",
                 U"am",  U"da",  U"dos", U"do",  U"dei",   U"degli", U"&",  U"og",  U"i"});

constexpr auto CONTRACT_WORDS =
    text::words({U"the",         U"this",         U"that",       U"these",       U"by",
                 U"between",     U"and",          U"for",        U"to",          U"of",
                 U"in",          U"at",           U"with",       U"from",        U"where",
                 U"if",          U"when",         U"each",       U"any",         U"all",
                 U"such",        U"its",          U"our",        U"your",        U"both",
                 U"dear",        U"on",           U"as",         U"a",           U"an",
                 U"no",          U"not",          U"neither",    U"either",      U"upon",
                 U"under",       U"unless",       U"subject",    U"agreement",   U"contract",
                 U"section",     U"article",      U"clause",     U"schedule",    U"annex",
                 U"appendix",    U"exhibit",      U"party",      U"parties",     U"buyer",
                 U"seller",      U"supplier",     U"purchaser",  U"client",      U"customer",
                 U"contractor",  U"employer",     U"employee",   U"licensor",    U"licensee",
                 U"lender",      U"borrower",     U"guarantor",  U"principal",   U"agent",
                 U"lessor",      U"lessee",       U"landlord",   U"tenant",      U"company",
                 U"business",    U"day",          U"date",       U"name",        U"title",
                 U"signature",   U"address",      U"tel",        U"email",       U"e-mail",
                 U"phone",       U"fax",          U"notice",     U"notices",     U"invoice",
                 U"invoices",    U"services",     U"service",    U"payment",     U"fee",
                 U"fees",        U"term",         U"terms",      U"general",     U"effective",
                 U"arbitration", U"issuing",      U"advising",   U"competent",   U"beneficiary",
                 U"receiving",   U"paying",       U"registered", U"head",        U"target",
                 U"project",     U"group",        U"holding",    U"parent",      U"joint",
                 U"steering",    U"audit",        U"managing",   U"executive",   U"vice",
                 U"deputy",      U"assistant",    U"senior",     U"chief",       U"attention",
                 U"attn",        U"contact",      U"witness",    U"bank",        U"account",
                 U"please",      U"yours",        U"sincerely",  U"mr",          U"ms",
                 U"mrs",         U"dr",           U"prof",       U"mme",         U"confidential",
                 U"information", U"intellectual", U"property",   U"force",       U"majeure",
                 U"governing",   U"law",          U"dispute",    U"resolution",  U"data",
                 U"protection",  U"personal",     U"products",   U"product",     U"goods",
                 U"delivery",    U"price",        U"total",      U"amount",      U"signed",
                 U"via",         U"per",          U"legal",      U"counsel",     U"copy",
                 U"whereas",     U"now",          U"therefore",  U"january",     U"february",
                 U"march",       U"april",        U"may",        U"june",        U"july",
                 U"august",      U"september",    U"october",    U"november",    U"december",
                 U"discloser",   U"recipient",    U"provider",   U"distributor", U"adviser",
                 U"consultant",  U"owner",        U"charterers", U"vessel",      U"master",
                 U"port",        U"ship",         U"statement",  U"work",        U"final",
                 U"first",       U"second",       U"third",      U"interim",     U"annual",
                 U"monthly",     U"claimant",     U"respondent", U"tribunal",    U"award",
                 U"claims",      U"reference",    U"ref",        U"state",       U"federal",
                 U"high",        U"supreme",      U"commercial", U"superior",    U"district",
                 U"lead",        U"member",       U"affiliate",  U"subsidiary",  U"trade",
                 U"usd",         U"eur",          U"rmb",        U"iban",        U"swift",
                 U"bic",         U"vat",          U"no.",        U"mr.",         U"ms.",
                 U"dr.",         U"mrs.",         U"prof.",      U"tel.",        U"place",
                 U"english",     U"chinese",      U"technical",  U"financial",   U"operations",
                 U"sales",       U"purchase",     U"order"});

}  // namespace

bool is_connective(std::u32string_view word) { return CONNECTIVES.contains(word); }

bool is_contract_word(std::u32string_view word) { return CONTRACT_WORDS.contains(lowered(word)); }

}  // namespace core::nlp
