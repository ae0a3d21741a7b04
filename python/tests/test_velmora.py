"""The Python module over the bundled models; how well they match is tested elsewhere."""

import os
import pickle
import threading

import numpy
import pytest

import velmora
from velmora import Matcher, Model

RULES = {1: ["Switch on the light.", "It is too dark here."], 2: ["Play some music."], 3: "Close the door."}


@pytest.fixture(scope="module")
def matcher():
    return Matcher("enu", RULES)


def test_rules_come_as_a_dict_as_pairs_or_as_a_file(matcher, tmp_path):
    pairs = [(id, s) for id, said in RULES.items() for s in ([said] if isinstance(said, str) else said)]
    file = tmp_path / "rules.tsv"
    file.write_text("".join(f"{id}\t{sentence}\n" for id, sentence in pairs), encoding="utf-8")
    expected = matcher.match("turn on the lamp")
    for rules in (pairs, file, str(file)):
        other = Matcher(Model("enu"), rules)
        assert other.rules == matcher.rules
        assert other.match("turn on the lamp") == expected


def test_a_match_has_id_score_sentence_and_margin(matcher):
    answer = matcher.match("so dark here, floccinaucin", top=2)
    assert answer.best == answer.matches[0]
    assert answer.best.id == 1
    assert answer.best.sentence == 1
    assert len(answer.matches) == 2
    assert answer.margin == pytest.approx(answer.matches[0].score - answer.matches[1].score)
    assert [word[:6] for word in answer.unknown] == ["floccin"[:6]]


def test_threshold_and_active_rules_limit_the_answer(matcher):
    assert matcher.match("switch on the light", threshold=2.0).best is None
    only_doors = matcher.activate([3])
    assert len(only_doors) == 1
    assert [match.id for match in matcher.match("switch on the light", active=only_doors).matches] == [3]


def test_match_many_is_match_for_each_whatever_the_threads(matcher):
    sentences = ["lights please", "some music", "", "the door is open"] * 25
    expected = [matcher.match(sentence) for sentence in sentences]
    for threads in (0, 1, 3):
        assert matcher.match_many(sentences, threads=threads) == expected


def test_other_python_threads_go_on_while_many_are_matched(matcher):
    ticks = []
    done = threading.Event()

    def tick():
        while not done.wait(0.001):
            ticks.append(None)

    ticker = threading.Thread(target=tick)
    ticker.start()
    while not ticks:  # until it runs
        pass
    before = len(ticks)
    matcher.match_many(["switch on the light and play some music"] * 3000)
    after = len(ticks)
    done.set()
    ticker.join()
    assert after > before


def test_an_explanation_adds_up_to_the_score(matcher):
    why = matcher.explain("it is dark, switch on a lamp", 1)
    assert why.score == pytest.approx(matcher.match("it is dark, switch on a lamp").matches[0].score, abs=1e-12)
    assert sum(pair.total for pair in why.pairs) == pytest.approx(why.score, abs=1e-12)
    assert "dark" in {pair.query_word for pair in why.pairs}


def test_lint_names_what_is_wrong():
    findings = Matcher("enu", {1: "Close the door.", 2: ["Close the door!", "?!"]}).lint()
    assert {(finding.kind, finding.rule) for finding in findings} >= {("same_words", 1), ("empty_sentence", 2)}


def test_evaluate_reads_pairs_and_files(matcher, tmp_path):
    expectations = [(1, "switch on the light"), (2, "close the door"), (None, "what is the capital of France")]
    file = tmp_path / "expectations.tsv"
    file.write_text("".join(f"{'-' if id is None else id}\t{s}\n" for id, s in expectations), encoding="utf-8")
    for given in (expectations, file):
        evaluation = matcher.evaluate(given)
        assert (evaluation.in_scope, evaluation.out_of_scope) == (2, 1)
        assert evaluation.first == 0.5
        assert (evaluation.failures[0].expectation, evaluation.failures[0].got) == (1, 3)


def test_vectors_are_rows_of_float64(matcher):
    model = matcher.model
    rows = model.vectors(["switch on the light", "play some music", "!"])
    assert rows.shape == (3, model.dimension)
    assert rows.dtype == numpy.float64
    assert numpy.linalg.norm(rows, axis=1) == pytest.approx([1, 1, 0])
    assert numpy.array_equal(rows[1], model.vector("play some music"))


def test_records_and_matchers_survive_pickling(matcher):
    answer = matcher.match("turn on the lamp")
    for value in (answer, matcher.explain("lamp", 1), matcher.evaluate([(1, "lamp")])):
        assert pickle.loads(pickle.dumps(value)) == value
    assert pickle.loads(pickle.dumps(matcher)).match("turn on the lamp") == answer


def test_reprs_read_well(matcher):
    assert repr(matcher) == "<velmora.Matcher 'enu': 3 rules, 4 sentences>"
    assert repr(velmora.Match(7, 0.123456, 2)) == "Match(id=7, score=0.123, sentence=2)"


def bad_rules_file(path):
    path.write_text("1\tPlay.\nx\tStop.\n", encoding="utf-8")
    return lambda: Matcher("enu", path)


@pytest.mark.parametrize("make, said", [
    (lambda path: lambda: Matcher("xyz", RULES), "xyz"),
    (lambda path: lambda: Model("enu", path / "nowhere"), "nowhere"),
    (lambda path: bad_rules_file(path / "rules.tsv"), "rules.tsv:2"),
    (lambda path: lambda: Matcher("enu", RULES).explain("light", 99), "99"),
    (lambda path: lambda: Matcher("enu", RULES).activate([99]), "99"),
    (lambda path: lambda: Matcher("enu", RULES).evaluate([(99, "light")]), "99"),
])
def test_what_is_wrong_is_named(make, said, tmp_path):
    with pytest.raises(velmora.Error, match=said):
        make(tmp_path)()


def test_the_sample_dialogue_loads():
    rules = os.path.join(os.environ["VELMORA_DIALOGUES"], "household-enu.tsv")
    assert len(Matcher("enu", rules)) > 20


def test_the_classifier_fits_and_predicts():
    sklearn = pytest.importorskip("sklearn")
    from velmora.sklearn import RuleClassifier

    sentences = ["switch on the light", "it is dark", "play a song", "some music please"]
    classifier = RuleClassifier().fit(sentences, ["light", "light", "music", "music"])
    assert list(classifier.predict(["turn on the lamp", "I want to hear music"])) == ["light", "music"]
    assert classifier.decision_function(["music"]).argmax() == list(classifier.classes_).index("music")
    assert classifier.score(sentences, ["light", "light", "music", "music"]) == 1.0
    assert sklearn.base.clone(classifier).get_params()["model"] == "enu"
