// The stages that see the hits of a whole document, whoever found them, before
// anything is masked.
//
// They repair what is known to go wrong later: a name that wins over the longer
// name around it and leaves the rest readable, an amount of two figures of which
// one is masked, a name that is found once and missed elsewhere. No stage needs
// to know which analyzer made the hits.
#pragma once

#include <vector>

#include "core/recognition/analyzer_engine.hpp"

namespace core::nlp {

using recognition::NlpArtifacts;
using recognition::RecognizerResult;

// The stages below by their names, in the order in which they run.
std::vector<recognition::Refinement> refinements();

// Makes sense of any hits, also those of a careless analyzer. A span is cut to the
// text, to whole lines and cells (a hit over a line end, a tab or a paragraph joiner
// becomes one for each part) and to its surface without blanks around it. Dropped:
// hits of nothing, such as reversed spans, and hits that score 0 or less. A score
// above 1 counts as 1; one that is no number as the least there is, as a hit of
// unknown worth is better masked than missed.
std::vector<RecognizerResult> make_usable(const NlpArtifacts& artifacts,
                                          std::vector<RecognizerResult> results);

// The kinds that guard their span: 银行 as a mere noun, HTTP as a protocol.
std::vector<std::string> shield_kinds();

// Drops hits of other kinds within a hit of a shield kind.
std::vector<RecognizerResult> apply_shields(const NlpArtifacts& artifacts,
                                            std::vector<RecognizerResult> results);

// Names without what does not belong to them: labels (地址：北京… is 北京…), quotes,
// brackets, particles; a name that a label cuts in two becomes two. Latin names reach
// to the edges of words. Mere labels and roles (地址, 甲方, Party A, the Company) are
// no names and dropped.
std::vector<RecognizerResult> trim_names(const NlpArtifacts& artifacts,
                                         std::vector<RecognizerResult> results);

// One hit for the fragments of one postal address: 上海市 + 浦东新区 + 张杨路500号;
// 12 Main Street + London + UK. Not for a list of places (北京、上海).
std::vector<RecognizerResult> join_addresses(const NlpArtifacts& artifacts,
                                             std::vector<RecognizerResult> results);

// One hit for each figure of an amount: 100元-200元, $1,000–$2,000, 100元5角. Where an
// amount is masked, only its first figure is.
std::vector<RecognizerResult> split_amounts(const NlpArtifacts& artifacts,
                                            std::vector<RecognizerResult> results);

// Persons who stand beside what was found: before a telephone number or a mail
// address, and in brackets behind their name in the other script.
std::vector<RecognizerResult> add_neighbouring_persons(const NlpArtifacts& artifacts,
                                                       std::vector<RecognizerResult> results);

// Latin names without the title before them (Dr. Voss is Voss) and without function words
// at their edges. A word that the document uses as the role of a party (Hirer: ..., the
// Hirer) is no name and dropped.
std::vector<RecognizerResult> drop_roles_and_titles(const NlpArtifacts& artifacts,
                                                    std::vector<RecognizerResult> results);

// One kind for all hits with the same spelling that were read as a person here and as
// an organization there: the more frequent one. A person who is the brand of an
// organization found (恪诚招标 of 乌鲁木齐恪诚招标有限公司), and whose name nobody bears,
// becomes an organization.
std::vector<RecognizerResult> agree_on_kinds(const NlpArtifacts& artifacts,
                                             std::vector<RecognizerResult> results);

// Further mentions of the names that were found, also by the short forms that the
// document defines or that follow from the full name: the longest first, in any letter
// case, width and spacing, also across the end of a line. Not inside a longer word.
// A mention takes the place of the hits of names that lie within it.
std::vector<RecognizerResult> add_further_mentions(const NlpArtifacts& artifacts,
                                                   std::vector<RecognizerResult> results);

// Drops persons and places inside the name of an organization or an address, a name
// inside a longer one of its kind, and dates and places inside the title of a law
// (《…》). The person in 张三律师事务所 becomes the firm.
std::vector<RecognizerResult> drop_misplaced(const NlpArtifacts& artifacts,
                                             std::vector<RecognizerResult> results);

}  // namespace core::nlp
