"""WordNet: groups of words with one meaning, their definitions and examples."""

import functools
import re
from collections import namedtuple

from corpus import Document, clean
from downloads import unpack

Synset = namedtuple("Synset", "lemmas definition examples related")

# Files of the database and the letters that stand for them in references.
PARTS = {"noun": "n", "verb": "v", "adj": "a", "adv": "r"}

# Lexicographer files without general vocabulary: species and proper names.
TAXONOMY = {5, 20}

# Relations that join words of one subject: hypernym, similar to, also,
# entailment, cause, verb group, derivation, attribute, pertains to.
RELATIONS = {"@", "&", "^", "*", ">", "$", "+", "=", "\\"}


def folder():
    return unpack("wordnet") / "usr/share/wordnet"


@functools.cache
def synsets():
    """The general vocabulary: no species and no named individuals."""
    entries = {}
    for part, letter in PARTS.items():
        with open(folder() / f"data.{part}", encoding="ascii") as data:
            for line in data:
                if line.startswith("  "):
                    continue
                head, _, gloss = line.partition("|")
                fields = head.split()
                word_count = int(fields[3], 16)
                lemmas = [re.sub(r"\(.*\)", "", fields[4 + 2 * k]).replace("_", " ")
                          for k in range(word_count)]
                at = 4 + 2 * word_count
                pointers = [fields[at + 1 + 4 * k:at + 4 + 4 * k] for k in range(int(fields[at]))]
                is_named = int(fields[1]) in TAXONOMY or any(p[0] == "@i" for p in pointers)
                examples = re.findall(r'"([^"]*)"', gloss)
                definition = clean(re.sub(r'"[^"]*"', " ", gloss).replace(";", " ; "))
                entries[letter + fields[0]] = (lemmas, definition, examples, pointers, is_named)
    found = []
    for lemmas, definition, examples, pointers, is_named in entries.values():
        if is_named:
            continue
        related = []
        for symbol, offset, letter in pointers:
            entry = entries.get(letter + offset)
            if symbol in RELATIONS and entry and not entry[4]:
                related += [word for word in entry[0] if word not in related]
        found.append(Synset(lemmas, definition, examples, related))
    return found


def documents():
    """For each synset: its words with their definition ("wordnet"), each
    example by itself ("examples"), its words and those of related synsets
    ("synonyms").
    """
    for synset in synsets():
        yield Document("wordnet", " ".join(synset.lemmas) + " : " + synset.definition)
        for example in synset.examples:
            yield Document("examples", example)
        yield Document("synonyms", " ".join(synset.lemmas + synset.related))


def texts(label):
    """The documents of one label."""
    return (document.text for document in documents() if document.label == label)


def irregular_forms():
    """{irregular form: base form}, verbs before nouns before adjectives."""
    base_of = {}
    for part in ("verb", "noun", "adj"):
        for line in (folder() / f"{part}.exc").read_text(encoding="ascii").splitlines():
            form, base = line.split()[:2]
            base_of.setdefault(form, base)
    return base_of
