"""Documents of a training corpus: (label, text) pairs, one a line of the file."""

import re
import zlib


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
            yield label, text


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


def write_corpus(path, documents):
    """Writes each different document that is not empty as `label<TAB>text`. Returns their number."""
    seen = set()
    with open(path, "w", encoding="utf-8") as corpus:
        for label, text in documents:
            line = f"{label}\t{clean(text)}"
            if line not in seen and not line.endswith("\t"):
                seen.add(line)
                corpus.write(line + "\n")
    return len(seen)
