"""The matcher as a scikit-learn classifier, so that it can be compared with what you have. Needs scikit-learn.

    from sklearn.model_selection import cross_val_score
    from velmora.sklearn import RuleClassifier

    cross_val_score(RuleClassifier("enu"), sentences, labels)
"""

from __future__ import annotations

from typing import Any, Iterable, Union

import numpy
from sklearn.base import BaseEstimator, ClassifierMixin
from sklearn.utils.validation import check_is_fitted

from . import Matcher, Model


class RuleClassifier(ClassifierMixin, BaseEstimator):
    """Each label is a rule, and its training sentences are the sentences of that rule.

    :param model: a Model, or the language of an installed one
    :param threads: how many threads predict (0: as many as the machine runs)
    """

    def __init__(self, model: Union[str, Model] = "enu", threads: int = 1) -> None:
        self.model = model
        self.threads = threads

    def fit(self, X: Iterable[str], y: Iterable[Any]) -> "RuleClassifier":
        sentences, labels = list(X), numpy.asarray(list(y))
        if len(sentences) != len(labels):
            raise ValueError(f"{len(sentences)} sentences but {len(labels)} labels")
        self.classes_, numbers = numpy.unique(labels, return_inverse=True)
        self.matcher_ = Matcher(self.model, zip(numbers.tolist(), sentences))
        return self

    def decision_function(self, X: Iterable[str]) -> numpy.ndarray:
        """The score of every label for every sentence: n x labels, in the order of classes_."""
        check_is_fitted(self, "matcher_")
        answers = self.matcher_.match_many(X, top=len(self.classes_), threads=self.threads)
        scores = numpy.zeros((len(answers), len(self.classes_)))
        for row, answer in zip(scores, answers):
            for match in answer.matches:
                row[match.id] = match.score
        return scores

    def predict(self, X: Iterable[str]) -> numpy.ndarray:
        check_is_fitted(self, "matcher_")
        answers = self.matcher_.match_many(X, top=1, threads=self.threads)
        return self.classes_[[answer.matches[0].id for answer in answers]]
