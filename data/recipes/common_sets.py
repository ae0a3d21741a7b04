#!/usr/bin/python3
"""Turns documents of stems into sets of stems: common_sets.py < STEMS > SETS.

The library counts a word of a sentence once, however often it stands there. A
model that is to fold in sentences is trained on documents of the same kind, and
two documents with the same words are then the same document.
"""

import sys

for line in sys.stdin.buffer:
    label, _, stems = line.rstrip(b"\n").partition(b"\t")
    sys.stdout.buffer.write(label + b"\t" + b" ".join(sorted(set(stems.split()))) + b"\n")
