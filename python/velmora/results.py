"""What the matcher answers with: immutable records that compare, unpack and pickle."""

from __future__ import annotations

from typing import List, NamedTuple, Optional


class Match(NamedTuple):
    """A rule that answers a sentence."""

    id: int
    #: At most 1; what is unrelated lies around 0.
    score: float
    #: Which sentence of the rule came closest: an index into its sentences.
    sentence: int

    def __repr__(self) -> str:
        return f"Match(id={self.id}, score={self.score:.3f}, sentence={self.sentence})"


class Answer(NamedTuple):
    """What was found out about a sentence."""

    #: Best first; rules of equal scores by ascending id.
    matches: List[Match]
    #: Stems of the sentence that neither the model nor the rules know, sorted.
    unknown: List[str]
    #: Best score less the second best, whether or not they reach the threshold.
    margin: float

    @property
    def best(self) -> Optional[Match]:
        """The best match; None when nothing reaches the threshold."""
        return self.matches[0] if self.matches else None

    def __repr__(self) -> str:
        return f"Answer({self.matches}, unknown={self.unknown}, margin={self.margin:.3f})"


class WordPair(NamedTuple):
    """What two words add to a score; words are stems."""

    query_word: str
    #: Empty for what the sentences of the other rules add or take away.
    rule_word: str
    latent: float
    words: float
    characters: float

    @property
    def total(self) -> float:
        return self.latent + self.words + self.characters

    def __repr__(self) -> str:
        return f"WordPair({self.query_word!r}, {self.rule_word!r}, {self.total:+.3f})"


class Explanation(NamedTuple):
    """A score as a sum over pairs of words: the totals of all pairs add up to it."""

    id: int
    score: float
    sentence: int
    #: Strongest first.
    pairs: List[WordPair]
    unknown: List[str]

    def __repr__(self) -> str:
        return f"Explanation(id={self.id}, score={self.score:.3f}, {len(self.pairs)} pairs)"


class Finding(NamedTuple):
    """A fault of a set of rules, as Matcher.lint finds it."""

    #: "unknown_word", "too_close", "finds_another_rule", ...
    kind: str
    rule: int
    sentence: int
    other: Optional[int]
    other_sentence: Optional[int]
    text: str


class Failure(NamedTuple):
    """An expectation that was not met."""

    #: Index into the expectations.
    expectation: int
    #: Rank of the expected rule, from 1; 0 when no rule should answer.
    rank: int
    wanted_score: float
    got: int
    got_score: float


class Confusion(NamedTuple):
    """How often sentences for one rule were answered by another."""

    wanted: int
    got: int
    count: int


class Threshold(NamedTuple):
    """The score that separates right answers best from all others."""

    score: float
    #: Share of the right first answers that reach it.
    keeps: float
    #: Share of the wrong first answers, and of the sentences for no rule, that reach it.
    lets_through: float


class Evaluation(NamedTuple):
    """How well a matcher answers sentences whose answers are known; shares from 0 to 1."""

    in_scope: int
    out_of_scope: int
    first: float
    among_three: float
    mean_reciprocal_rank: float
    area_under_roc: Optional[float]
    threshold: Threshold
    failures: List[Failure]
    confusions: List[Confusion]

    def __repr__(self) -> str:
        return (
            f"Evaluation({self.in_scope} sentences: {self.first:.1%} first, {self.among_three:.1%} among three; "
            f"{len(self.failures)} failures; threshold {self.threshold.score:.3f})"
        )


def answer_from(values: tuple) -> Answer:
    matches, unknown, margin = values
    return Answer(list(map(Match._make, matches)), unknown, margin)


def explanation_from(values: tuple) -> Explanation:
    id, score, sentence, pairs, unknown = values
    return Explanation(id, score, sentence, [WordPair._make(pair) for pair in pairs], unknown)


def evaluation_from(values: tuple) -> Evaluation:
    *shares, threshold, failures, confusions = values
    return Evaluation(
        *shares,
        Threshold._make(threshold),
        [Failure._make(failure) for failure in failures],
        [Confusion._make(confusion) for confusion in confusions],
    )
