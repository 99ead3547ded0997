#include "core/recognition/predefined/selection.hpp"

#include <algorithm>
#include <iterator>

#include "core/recognition/predefined/predefined.hpp"

namespace core::recognition {
namespace {

namespace entity_type = anonymization::entity_type;

constexpr std::string_view MAINLAND_KINDS[] = {
    entity_type::CHINA_ID_CARD, entity_type::CHINA_USCC,   entity_type::PASSPORT_NUMBER,
    entity_type::VEHICLE_PLATE, entity_type::QUAL_CODE,    entity_type::BANK_ACCOUNT,
    entity_type::CARD_LAST4,    entity_type::STOCK_TICKER, entity_type::SOCIAL_ACCOUNT,
    entity_type::IT_PROTOCOL,   entity_type::GAME};

bool is_mainland(const EntityRecognizer& recognizer) {
  return std::find(std::begin(MAINLAND_KINDS), std::end(MAINLAND_KINDS),
                   recognizer.supported_entities().front()) != std::end(MAINLAND_KINDS);
}

void load(RecognizerRegistry& registry, bool mainland) {
  RecognizerRegistry all;
  add_contact_recognizers(all);
  add_phone_recognizers(all);
  add_identity_number_recognizers(all);
  add_registration_number_recognizers(all);
  add_document_number_recognizers(all);
  add_banking_recognizers(all);
  add_date_recognizers(all);
  add_money_recognizers(all);
  add_shield_recognizers(all);
  add_game_recognizers(all);
  for (auto& recognizer : all.recognizers()) {
    if (is_mainland(*recognizer) == mainland) registry.add_recognizer(std::move(recognizer));
  }
}

}  // namespace

void load_predefined_recognizers(RecognizerRegistry& registry) { load(registry, false); }

void load_mainland_recognizers(RecognizerRegistry& registry) { load(registry, true); }

}  // namespace core::recognition
