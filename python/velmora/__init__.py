"""Which rule of a dialogue does a sentence mean?

    from velmora import Matcher

    matcher = Matcher("enu", rules={101: ["Switch on the light.", "It is too dark."], 201: "Play some music."})
    matcher.match("turn on the lamp, please").best        # Match(id=101, ...)

Rules come as a file (``id<TAB>sentence`` on each line), a dict, or a list of pairs. A matcher is immutable: match from as
many threads as you like. Where something is wrong with a model, a file or an id, ``velmora.Error`` says what, and for a
file in which line.
"""

from __future__ import annotations

import os
from typing import TYPE_CHECKING, Dict, Iterable, List, Mapping, Optional, Sequence, Tuple, Union

from . import _velmora
from ._velmora import ActiveRules, Error, __version__, installed_languages
from .results import (
    Answer,
    Confusion,
    Evaluation,
    Explanation,
    Failure,
    Finding,
    Match,
    Threshold,
    WordPair,
    answer_from,
    evaluation_from,
    explanation_from,
)

if TYPE_CHECKING:
    import numpy

__all__ = [
    "ActiveRules", "Answer", "Confusion", "Error", "Evaluation", "Explanation", "Failure", "Finding", "Match", "Matcher",
    "Model", "Threshold", "WordPair", "__version__", "installed_languages",
]

Path = Union[str, "os.PathLike[str]"]
Rules = Union[Path, Mapping[int, Union[str, Sequence[str]]], Iterable[Tuple[int, str]]]
Expectations = Union[Path, Iterable[Tuple[Optional[int], str]]]


class Model:
    """The model of a language: dictionary, weights and latent factors, with the stemmer that goes with them.

    :param language: "enu", "frf" or "jpj"
    :param directory: the folder of the four model files; by default the installed model
    """

    def __init__(self, language: str = "enu", directory: Optional[Path] = None) -> None:
        self._model = _velmora.Model(language, None if directory is None else os.fspath(directory))

    @property
    def language(self) -> str:
        return self._model.language()

    @property
    def directory(self) -> str:
        return os.fspath(self._model.directory())

    @property
    def dimension(self) -> int:
        """Number of latent dimensions, D."""
        return self._model.dimension()

    @property
    def vocabulary_size(self) -> int:
        """Number of words in the dictionary."""
        return self._model.vocabulary_size()

    def stems(self, sentence: str) -> List[str]:
        """A sentence as the matcher sees it: its stems, sorted and without repeats."""
        return self._model.stems(sentence)

    def knows(self, stem: str) -> bool:
        """Whether a stem is in the dictionary."""
        return self._model.knows(stem)

    def vector(self, sentence: str) -> "numpy.ndarray":
        """The latent vector of a sentence: D float64 values of length 1, or zeros without a known word."""
        return self._model.vector(sentence)

    def vectors(self, sentences: Iterable[str]) -> "numpy.ndarray":
        """The latent vectors of n sentences: n x D float64."""
        return self._model.vectors(list(sentences))

    def __reduce__(self) -> tuple:
        return Model, (self.language, self.directory)

    def __repr__(self) -> str:
        return f"<velmora.Model {self.language!r}: {self.vocabulary_size} words, {self.dimension} dimensions>"


class Matcher:
    """Rules compiled for matching.

    :param model: a Model, or the language of an installed one
    :param rules: the path of a file, a dict from id to a sentence or sentences, or pairs of id and sentence
    """

    def __init__(self, model: Union[str, Model] = "enu", rules: Rules = ()) -> None:
        self.model = Model(model) if isinstance(model, str) else model
        #: Rule id to sentences.
        self.rules: Dict[int, List[str]] = _as_dict(rules)
        self._matcher = _velmora.Matcher(self.model._model, list(self.rules.items()))

    def match(
        self, sentence: str, top: int = 5, threshold: Optional[float] = None, active: Optional[ActiveRules] = None
    ) -> Answer:
        """Ranks the rules for a sentence.

        :param top: at most so many matches
        :param threshold: matches below this score are left out
        :param active: the rules that may answer, as activate() gives them; by default all
        """
        return answer_from(self._matcher.match(sentence, top, threshold, active))

    def match_many(
        self,
        sentences: Iterable[str],
        top: int = 5,
        threshold: Optional[float] = None,
        active: Optional[ActiveRules] = None,
        threads: int = 1,
    ) -> List[Answer]:
        """The same for many sentences, by several threads at once (0: as many as the machine runs)."""
        answers = self._matcher.match_many(list(sentences), top, threshold, active, threads)
        return [answer_from(values) for values in answers]

    def activate(self, ids: Iterable[int]) -> ActiveRules:
        """Prepares a set of rules for ``active=``, so that matching costs only what is active."""
        return self._matcher.activate(list(ids))

    def explain(self, sentence: str, id: int) -> Explanation:
        """Why a rule has the score that match() gives it, as a sum over pairs of words."""
        return explanation_from(self._matcher.explain(sentence, id))

    def lint(self) -> List[Finding]:
        """Faults of the rules that can be found without a user: sentences too close, words unknown, ..."""
        return [Finding._make(values) for values in self._matcher.lint()]

    def evaluate(self, expectations: Expectations, threads: int = 1) -> Evaluation:
        """Measures the matcher on sentences whose answers are known.

        :param expectations: the path of a file (``id<TAB>sentence`` or ``-<TAB>sentence``), or pairs of id and sentence,
            with None as the id where no rule should answer
        """
        if isinstance(expectations, (str, os.PathLike)):
            wanted = _velmora.read_expectations(os.fspath(expectations))
        else:
            wanted = [(id, sentence, 0) for id, sentence in expectations]
        return evaluation_from(self._matcher.evaluate(wanted, threads))

    def __len__(self) -> int:
        """Number of rules."""
        return len(self.rules)

    def __reduce__(self) -> tuple:
        return Matcher, (self.model, self.rules)

    def __repr__(self) -> str:
        count = sum(len(sentences) for sentences in self.rules.values())
        return f"<velmora.Matcher {self.model.language!r}: {len(self.rules)} rules, {count} sentences>"


def _as_dict(rules: Rules) -> Dict[int, List[str]]:
    if isinstance(rules, (str, os.PathLike)):
        return dict(_velmora.read_rules(os.fspath(rules)))
    if isinstance(rules, Mapping):
        return {id: [said] if isinstance(said, str) else list(said) for id, said in rules.items()}
    grouped: Dict[int, List[str]] = {}
    for id, sentence in rules:
        grouped.setdefault(id, []).append(sentence)
    return grouped
