"""A dialogue at a reception of a hotel, in thirty lines: python3 reception.py"""

from velmora import Matcher

RULES = {
    1: ["When do I have to check out?", "What time must I leave the room?"],
    2: ["I need a later check-out.", "Can I stay in my room until noon?"],
    3: ["Is breakfast included?", "Where do I get breakfast?"],
    4: ["My key card does not work.", "I cannot open the door of my room."],
}
ANSWERS = {1: "by eleven o'clock", 2: "a late checkout is no problem", 3: "breakfast is downstairs", 4: "reception comes"}

matcher = Matcher("enu", RULES)

for sentence in ["May I keep the room a little longer tomorrow?", "The lock won't let me in!", "Xyzzy?"]:
    answer = matcher.match(sentence, top=2, threshold=0.2)
    if answer.best is None:
        print(f"{sentence}  ->  (ask back)  unknown words: {', '.join(answer.unknown) or 'none'}")
        continue
    print(f"{sentence}  ->  {ANSWERS[answer.best.id]} ({answer.best.score:.2f}, {answer.margin:.2f} ahead)")
    for pair in matcher.explain(sentence, answer.best.id).pairs[:3]:
        print(f"    {pair.query_word:12} {pair.rule_word:12} {pair.total:+.3f}")

print(matcher.evaluate([(1, "at what hour do you want us out"), (3, "do we pay extra for breakfast"), (None, "tell me a joke")]))
