// Whether a term that a contract defines for itself is a name: “华信科技” and
// "Acme" are, roles (甲方, "Supplier") and things (合资公司, "Closing Date") are not.
#pragma once

#include <string_view>

namespace core::anonymization {

// `term` without its quotes. False for a term of one character, or longer than a short name is.
//
//   华信科技, 塔玛拉克公司, Acme, "C&F", Pelican Straits  ->  true
//   甲方, 目标公司, 许可产品, 本协议, the Bank, Products, JV Company, PRC  ->  false
bool is_name_like_term(std::u32string_view term);

// Whether `text` ends in the title of a document or a law, so that what is
// defined next is its short title: 《公司法》, …保密协议, this Data Processing Agreement.
bool ends_in_document_title(std::u32string_view text);

}  // namespace core::anonymization
