// Labels of flattened tables: the head of a column, the first cell of a row.
//
//   车牌号⇥驾驶员⇥电话             each cell below 驾驶员 is behind a person's label
//   联系人⇥赵丽娜⇥窦景明           and so is each cell to the right of 联系人
#pragma once

#include "core/recognition/nlp_artifacts.hpp"

namespace core::nlp {

// Adds to the words of `artifacts` an empty label, marked from_table, where each
// such cell begins.
void add_table_labels(recognition::NlpArtifacts& artifacts);

}  // namespace core::nlp
