#include "core/nlp/characters.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/more_organizations.hpp"
#include "core/text/regex.hpp"

namespace core::nlp {
namespace {

using recognition::NlpArtifacts;
using recognition::RecognizerResult;
using text::Regex;

constexpr double FRONT_HEADED_SCORE = 0.84;

// Université de Clairval-Montagne, Institut für Werkstofftechnik, Ministère de
// l'Enseignement supérieur. Not "Institut" alone.
const Regex RE_INSTITUTION(
    "RE_INSTITUTION",
    UR"((?<![\p{Latin}'-])(?:Universit(?:é|à|ät|at|eit|etet|y)|Universidade?|Uniwersytet|Univerzita|Technische (?:Hochschule|Universität)|(?:Fachh|H)ochschule|[ÉE]cole|Institut|Istituto|Instituto|Laboratoire|Laboratorio|Centre (?:[Nn]ational|de [Rr]echerche)|Centro (?:[Nn]acional|[Nn]azionale|de|di)|Minist(?:ère|erio|ero|ério)|Bundesminister(?:ium|in)|(?:Staats|Landes)?[Mm]inisterium|(?:Bundes|Landes|Landrats|Finanz|Patent|Umwelt)(?:amt|anstalt|agentur)|(?:Industrie- und )?Handels(?:kammer|register)|Chambre (?:de commerce|des)|Cámara de [Cc]omercio|Camera di [Cc]ommercio|Tribunal(?:e)? (?:de|di|judiciaire|administratif|da|do)|Cour (?:d'appel|de cassation)|Juzgado|Corte|Préfecture|Mairie|Ayuntamiento|Comune|Gemeente|Gemeinde|Stadtwerke|Académie|Academia|Akademie|Accademia|Fundación|Stichting|Vereniging|Coöperatie|Fundacja|Fundação|Fondation|Fondazione|Stiftung|Hôpital|Ospedale|Hospital (?:de|del|do)|Clinique|Klinikum|Krankenhaus|Banque|Banco|Banca|Bank Polska|Caisse|Sparkasse|Volksbank|Raiffeisenbank|Crédit|Société|Sociedad|Compagnie|Compañía|Établissements|Agence|Agencia|Agenzia|Direction générale|Deutsche[rs]?|Gesellschaft|Verband|Verein|Fédération|Federación)(?:(?: (?:de|des|du|la|le|les|für|und|et|der|die|del|della|delle|di|da|do|dos|das|para|e|y|en|van|voor|for|pour|sur|zur|zum|am|im)){0,3} (?:[dl]')?\p{Lu}[\p{Latin}'-]{1,30}(?: (?:supérieure?|nationale?|commerciale?|publique|e\.V\.))?){1,7})");

// UAB Gintaro Prekyba, OÜ Rannamäe Kaubandus, PT Karya Bumi Tbk, Kabushiki Kaisha Morinaga
const Regex RE_FORM_FIRST(
    "RE_FORM_FIRST",
    UR"((?<![\p{Latin}'-])(?:UAB|OÜ|SIA|PT\.?|Kabushiki Kaisha|Godo Kaisha|OOO|PJSC|JSC|CJSC|TOV|AO|Ets\.?)(?: ["“]?\p{Lu}[\p{Latin}&'-]{1,30}["”]?){1,5})",
    Regex::Scanned::YES);

bool has_lower(std::u32string_view s) { return std::any_of(s.begin(), s.end(), is_lower); }

}  // namespace

void add_front_headed_organizations(const NlpArtifacts& a, std::u32string_view unwrapped,
                                    std::vector<RecognizerResult>& out) {
  // Unwrapping writes blanks for line ends, which are of one kind: the index serves both.
  for (const auto& m : RE_INSTITUTION.find_all(unwrapped, a.index)) {
    add_by_line(a.folded, anonymization::entity_type::ORGANIZATION, m.start(), m.end(),
                FRONT_HEADED_SCORE, out);
  }
  for (const auto& m : RE_FORM_FIRST.find_all(a.folded, a.index)) {
    if (!has_lower(m.text())) continue;
    out.push_back(
        make_hit(anonymization::entity_type::ORGANIZATION, m.start(), m.end(), FRONT_HEADED_SCORE));
  }
}

}  // namespace core::nlp
