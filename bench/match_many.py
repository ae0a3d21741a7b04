"""What the Python module adds to matching many sentences: python3 match_many.py PROGRAM RULES EXPECTATIONS

PROGRAM is velmora-bench-match-many, which does the same in C++. The two take turns, and the fastest round of each counts.
"""

import itertools
import subprocess
import sys
import tempfile
import time

from velmora import Matcher

SENTENCES = 10_000
TURNS = 3

program, rules, expectations = sys.argv[1:]
matcher = Matcher("enu", rules)
said = [line.rstrip("\n").split("\t")[1] for line in open(expectations, encoding="utf-8") if "\t" in line]
sentences = list(itertools.islice(itertools.cycle(said), SENTENCES))

with tempfile.NamedTemporaryFile("w", encoding="utf-8") as file:
    file.write("".join(f"{sentence}\n" for sentence in sentences))
    file.flush()
    in_python, in_cpp = [], []
    for _ in range(TURNS):
        begin = time.perf_counter()
        answers = matcher.match_many(sentences)
        in_python.append(time.perf_counter() - begin)
        assert len(answers) == SENTENCES
        in_cpp.append(float(subprocess.check_output([program, rules, file.name])))

ratio = min(in_python) / min(in_cpp)
print(f"{SENTENCES} sentences: {min(in_cpp):.3f} s in C++, {min(in_python):.3f} s from Python")
print(f"{'match_many from Python against C++':52} {ratio:10.3f}   at most 1.30")
