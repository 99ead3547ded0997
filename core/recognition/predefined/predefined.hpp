// The recognizers that come with veildoc and go by shape, one function a family.
#pragma once

#include "core/recognition/recognizer_registry.hpp"

namespace core::recognition {

// E-mail, URL, IP address, telephone, accounts of social networks.
void add_contact_recognizers(RecognizerRegistry& registry);
// Persons, companies, vehicles, licences, securities.
void add_identity_number_recognizers(RecognizerRegistry& registry);
void add_banking_recognizers(RecognizerRegistry& registry);
void add_date_recognizers(RecognizerRegistry& registry);
void add_money_recognizers(RecognizerRegistry& registry);
// PERCENT and QUANTITY, which contracts usually need in clear.
void add_quantity_recognizers(RecognizerRegistry& registry);

}  // namespace core::recognition
