// Organizations that are not found by how their name ends.
#pragma once

#include <vector>

#include "core/recognition/entity_recognizer.hpp"

namespace core::nlp {

// Names that begin with their kind: Université de Liège, UAB Gintaras, Landratsamt Fürth.
void add_front_headed_organizations(const recognition::NlpArtifacts& artifacts,
                                    std::u32string_view unwrapped,
                                    std::vector<recognition::RecognizerResult>& out);

// Chinese names that end with a trade, without a legal form: 昆山恒牛五金, 锦官担保.
void add_trade_named_organizations(const recognition::NlpArtifacts& artifacts,
                                   std::vector<recognition::RecognizerResult>& out);

// Names behind the label of a party, or behind "on behalf of": Broker: Fjordmegling.
void add_labelled_organizations(const recognition::NlpArtifacts& artifacts,
                                std::vector<recognition::RecognizerResult>& out);

}  // namespace core::nlp
