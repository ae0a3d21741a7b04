"""Dictionaries between languages, for the French and the Japanese recipe.

Two languages without a free thesaurus have bilingual dictionaries. Words that
share a translation mean much the same, so a translation's words are a document
("equivalents"); and the definitions of WordNet are carried over word by word
("pivot"). Formats: dictd files of FreeDict, and EDICT.
"""

import gzip
import html
import json
import re
from collections import Counter, defaultdict, namedtuple

from common import clean, unpack

Entry = namedtuple("Entry", "head part senses")
Sense = namedtuple("Sense", "translations gloss")

# More words than this under one translation share no meaning any more.
LONGEST_GROUP = 12


def dictd_lines(name):
    """The text of a FreeDict dictionary, its preface left out."""
    (path,) = sorted((unpack(name) / "usr/share/dictd").glob("*.dict.dz"))
    with gzip.open(path, "rt", encoding="utf-8") as file:
        in_preface = True
        for line in file:
            if not in_preface:
                yield line.strip()
            elif re.search(r"FreeDict.* [Dd]ictionary ver\.", line):
                in_preface = False


def split_words(text):
    """Translations stand with commas between them, remarks in brackets."""
    text = re.sub(r"\([^()]*\)|\[[^\[\]]*\]|\{[^{}]*\}", " ", text)
    words = (clean(part) for part in re.split(r"[,;/、，；]", text))
    return [word for word in words if word]


def wiktionary_entries(name):
    """Entries of a dictionary made from Wiktionary.

    The head stands on a line with its part of speech in <>, each sense is a
    line of translations and perhaps a line that tells the sense in the language
    of the head. Numbers stand before a sense or behind the one before it.
    """
    head, part, senses, expects_translation = "", "", [], True
    for line in dictd_lines(name):
        match = re.match(r"([^/<]+?)(?: /.*/)?(?: <([a-z]+)[a-z, ]*>)?$", line)
        if match and len(match.group(1)) < len(line):
            if head:
                yield Entry(head, part, senses)
            head, part = match.group(1), match.group(2) or ""
            senses, expects_translation = [], True
            continue
        line, is_numbered = re.subn(r"^\d+\.(?:\s+|$)", "", line)
        line = re.sub(r"\s+\d+\.$", "", line)
        if is_numbered and line:
            expects_translation = True
        if line and (expects_translation or not senses):
            senses.append(Sense(split_words(line), ""))
        elif line:
            senses.append(Sense(senses[-1].translations if not is_numbered else [], clean(line)))
        expects_translation = False
    if head:
        yield Entry(head, part, senses)


JapaneseEntry = namedtuple("JapaneseEntry", "words senses")

# Notes run into the first translation without a blank.
NOTES = re.compile(
    r"Note: (?:.*?(?:kana alone|kanji alone|language|term|word|colloquialism|expression|abbreviation|slang"
    r"|usage|proverb|idiomatic|archaism|onomatopoeic or mimetic word))")


# A head line of a dictionary made from JMdict: writings with their sound.
JAPANESE_HEAD = re.compile(r" /[^/]*/(,|$)")


def japanese_entries(name):
    """Entries of a dictionary made from JMdict: words and senses."""
    entry = None
    for line in dictd_lines(name):
        if JAPANESE_HEAD.search(line):
            if entry:
                yield entry
            text = re.sub(r"/[^/]*/|\[[^\]]*\]|\([^)]*\)", " ", line)
            entry = JapaneseEntry([clean(w) for w in text.split(",") if clean(w)], [])
        elif entry:
            line = NOTES.sub("", re.sub(r"^\d+\.", "", line))
            words = split_words(line)
            if words:
                entry.senses.append(words)
    if entry:
        yield entry


def japanese_marks(name):
    """Writings of a dictionary made from JMdict: word, whether it is the first
    of its entry, and its marks, which name lists of common words.
    """
    for line in dictd_lines(name):
        if JAPANESE_HEAD.search(line):
            for place, writing in enumerate(re.sub(r"/[^/]*/", " ", line).split(",")):
                word = clean(re.sub(r"\[[^\]]*\]|\([^)]*\)", " ", writing))
                if word:
                    yield word, place == 0, set(re.findall(r"\[([a-z]+\d+)\]", writing))


EdictEntry = namedtuple("EdictEntry", "word reading is_common is_kana glosses")


def edict_entries():
    """Entries of EDICT: a word and its reading, if it has another, whether they
    are common, whether the first sense is usually written in kana, and English
    translations, the first sense's first.
    """
    with open(unpack("edict") / "usr/share/edict/edict", encoding="euc-jp", errors="replace") as file:
        next(file)
        for line in file:
            head, _, rest = line.partition("/")
            match = re.match(r"(\S+)(?: \[(\S+)\])?", head)
            if not match:
                continue
            glosses = [re.sub(r"\([^()]*\)|\{[^{}]*\}", " ", gloss) for gloss in rest.split("/")]
            glosses = [clean(gloss) for gloss in glosses if not gloss.startswith("EntL")]
            yield EdictEntry(match.group(1), match.group(2), "(P)" in rest, "(uk)" in rest.partition("(2)")[0],
                             [gloss for gloss in glosses if gloss])


def groups(translations_of):
    """Documents of words that mean much the same: a word and those that share
    at least two translations with it, from {word: translations}.
    """
    words_of = defaultdict(list)
    for word, translations in translations_of.items():
        for translation in translations:
            words_of[translation].append(word)
    for word, translations in translations_of.items():
        shared = Counter()
        for translation in translations:
            if len(words_of[translation]) <= LONGEST_GROUP:
                shared.update(words_of[translation])
        del shared[word]
        near = [other for other, count in shared.most_common(LONGEST_GROUP) if count >= 2]
        if near:
            yield " , ".join([word] + near)


def translations_into(target, languages, translations_of):
    """Documents of the words given for one sense, from the dictionaries of Wiktionary into a
    language. Adds what each word translates to translations_of.
    """
    for language in languages:
        for entry in wiktionary_entries(f"freedict-{language}-{target}"):
            if entry.part == "pn":
                continue
            for number, sense in enumerate(entry.senses):
                if not sense.gloss and len(sense.translations) > 1:
                    yield " , ".join(sense.translations)
                for word in sense.translations:
                    translations_of[word][language, entry.head, number] = None


def editor_sentences(locale, split):
    """What a map editor says: labels, hints, explanations."""
    def texts(value):
        if isinstance(value, str):
            yield value
        elif isinstance(value, dict):
            for part in value.values():
                yield from texts(part)
    path = unpack("editor") / f"package/dist/locales/{locale}.min.json"
    for text in texts(json.loads(path.read_text(encoding="utf-8"))):
        yield from split(re.sub(r"\{[^}]*\}|<[^>]*>|https?://\S+|[*#`_]", " ", text))


def handbook_paragraphs(locale):
    folder = unpack("handbook") / "usr/share/doc/debian-handbook/html" / locale
    for path in sorted(folder.glob("*.html")):
        text = path.read_text(encoding="utf-8")
        for paragraph in re.findall(r"<(?:p|div class=\"para\")>(.*?)</(?:p|div)>", text, re.S):
            yield clean(html.unescape(re.sub(r"<[^>]*>", "", paragraph)))


def handbook_sentences(locale, split):
    """A handbook for administrators, what is left in English left out."""
    english = set(handbook_paragraphs("en-US"))
    for paragraph in handbook_paragraphs(locale):
        if paragraph not in english:
            yield from split(paragraph)
