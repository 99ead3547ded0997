// The recognizers that come with veildoc and go by shape, one function a family.
#pragma once

#include "core/recognition/recognizer_registry.hpp"

namespace core::recognition {

// E-mail, URL, IP address, accounts of social networks.
void add_contact_recognizers(RecognizerRegistry& registry);
void add_phone_recognizers(RecognizerRegistry& registry);
// Persons, companies, vehicles, securities.
void add_identity_number_recognizers(RecognizerRegistry& registry);
// Licences, certificates, patents, registers: by a listed label, by a telling
// shape, by a check character.
void add_registration_number_recognizers(RecognizerRegistry& registry);
// Numbers of official documents and cases; numbers behind any other label.
void add_document_number_recognizers(RecognizerRegistry& registry);
void add_banking_recognizers(RecognizerRegistry& registry);
void add_date_recognizers(RecognizerRegistry& registry);
void add_money_recognizers(RecognizerRegistry& registry);
// Protocols and ciphers, which are no names: their hits keep others off.
void add_shield_recognizers(RecognizerRegistry& registry);
void add_game_recognizers(RecognizerRegistry& registry);
// PERCENT and QUANTITY, which contracts usually need in clear.
void add_quantity_recognizers(RecognizerRegistry& registry);

}  // namespace core::recognition
