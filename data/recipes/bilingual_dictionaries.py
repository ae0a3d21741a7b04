"""Readers of bilingual dictionaries: dictd files of FreeDict, and EDICT."""

import gzip
import re
from collections import namedtuple

from corpus import clean
from downloads import unpack

Sense = namedtuple("Sense", "translations gloss")


class Entry(namedtuple("Entry", "head part senses")):
    """A head word, its part of speech and its senses."""

    @property
    def is_proper_name(self):
        return self.part == "pn"


def dictd_lines(name):
    """The text of a FreeDict dictionary without its preface."""
    (path,) = sorted((unpack(name) / "usr/share/dictd").glob("*.dict.dz"))
    with gzip.open(path, "rt", encoding="utf-8") as file:
        in_preface = True
        for line in file:
            if not in_preface:
                yield line.strip()
            elif re.search(r"FreeDict.* [Dd]ictionary ver\.", line):
                in_preface = False


def split_words(text):
    """Translations have commas between them and remarks in brackets."""
    text = re.sub(r"\([^()]*\)|\[[^\[\]]*\]|\{[^{}]*\}", " ", text)
    words = (clean(part) for part in re.split(r"[,;/、，；]", text))
    return [word for word in words if word]


def wiktionary_entries(name):
    """Entries of a dictionary made from Wiktionary.

    The head stands on a line with its part of speech in <>, each sense is a
    line of translations and perhaps a line that explains the sense in the
    language of the head. Numbers stand before a sense or after the one before it.
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


class EdictEntry(namedtuple("EdictEntry", "word reading is_common is_kana changes_ending glosses")):
    """A word and its reading, if it has another; whether they are common; whether
    the first sense is usually written in kana; whether it is a verb of the class
    that changes its last letter; English translations, those of the first sense
    first.
    """

    @property
    def usual_writing(self):
        return self.reading if self.is_kana and self.reading else self.word


def edict_entries():
    with open(unpack("edict") / "usr/share/edict/edict", encoding="euc-jp", errors="replace") as file:
        next(file)
        for line in file:
            head, _, rest = line.partition("/")
            match = re.match(r"(\S+)(?: \[(\S+)\])?", head)
            if not match:
                continue
            glosses = [re.sub(r"\([^()]*\)|\{[^{}]*\}", " ", gloss) for gloss in rest.split("/")]
            glosses = [clean(gloss) for gloss in glosses if not gloss.startswith("EntL")]
            first_sense = rest.partition("(2)")[0]
            yield EdictEntry(match.group(1), match.group(2), "(P)" in rest, "(uk)" in first_sense,
                             re.search(r"\([a-z0-9,-]*\bv5", first_sense) is not None,
                             [gloss for gloss in glosses if gloss])

