"""Documents of a training corpus, one a line of the file.

A document with an English text is taught: its words learn from the vector that
the sentence encoder gives that text. The others say which words there are and
how often they occur.
"""

import json
import re
import zlib
from collections import namedtuple

from downloads import unpack

Document = namedtuple("Document", "label text english", defaults=[""])


def clean(text):
    """One line of text: each run of white space becomes a single blank."""
    return re.sub(r"\s+", " ", text).strip()


def sentences(text):
    """Splits running text of European languages after full stops."""
    return [part for part in re.split(r"(?<=[.!?])\s+(?=[\"'A-Z\u00c0-\u00dd])", clean(text)) if part]


def labelled(**texts_of):
    """Documents from label=texts, in the order of the arguments."""
    for label, texts in texts_of.items():
        for text in texts:
            yield Document(label, text)


def taught(**pairs_of):
    """Documents from label=pairs, where a pair is an English text and its translation."""
    for label, pairs in pairs_of.items():
        for english, text in pairs:
            yield Document(label, text, english)


def common_words(package):
    """{word: rank} of the subtitles of films, the most frequent first."""
    path = unpack(package) / "package/src/commonWords.json"
    return {word: rank for rank, word in enumerate(json.loads(path.read_text(encoding="utf-8")), 1)}


def spoken_count(rank, word_count):
    """How often a text of so many words holds the one of this rank: the frequency
    of spoken language (B. Mandelbrot, 1953), and at least twice.
    """
    return max(2, round(word_count * 0.18 / (rank + 4) ** 1.1))


def made_up_texts(counts, text_count):
    """text_count texts that together hold each word as often as counts says.

    A word's occurrences are spread evenly, and where they begin depends on the
    word, so that frequent words do not always meet the same neighbours.
    """
    texts = [[] for _ in range(text_count)]
    for word, count in counts.items():
        first = zlib.crc32(word.encode())
        for number in range(count):
            texts[(first + number * text_count // count) % text_count].append(word)
    for words in texts:
        yield " , ".join(words)


def write_corpus(path, english_path, documents):
    """Writes each different document that is not empty as `label<TAB>text`, and
    its English text, if it has one, on the same line of another file. Returns
    their number.
    """
    seen = set()
    with open(path, "w", encoding="utf-8") as corpus, open(english_path, "w", encoding="utf-8") as english:
        for document in documents:
            line = Document(document.label, clean(document.text), clean(document.english))
            if line.text and line not in seen:
                seen.add(line)
                corpus.write(f"{line.label}\t{line.text}\n")
                english.write(line.english + "\n")
    return len(seen)
