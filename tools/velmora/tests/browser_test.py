"""The workbench in a real browser: python3 browser_test.py PROGRAM DIALOGUES ARTEFACTS

Starts `velmora serve` on a copy of the household dialogue and drives headless Chromium over it. Screenshots are kept in
ARTEFACTS.
"""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import WebDriverWait

PROGRAM, DIALOGUES, ARTEFACTS = None, None, None
MARKUP = "<script>document.title='broken'</script>"


def open_browser():
    options = webdriver.ChromeOptions()
    for argument in ("--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
                     "--disable-background-networking", "--disable-component-update", "--disable-sync",
                     "--disable-dev-shm-usage", "--window-size=1100,900"):
        options.add_argument(argument)
    options.binary_location = "/usr/bin/chromium"
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    return webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)


class Workbench(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp(prefix="velmora-browser-"))
        cls.rules = cls.folder / "rules.tsv"
        shutil.copy(DIALOGUES / "household-enu.tsv", cls.rules)
        with cls.rules.open("a", encoding="utf-8") as file:
            file.write(f"9000\t{MARKUP}\n")
        cls.server = subprocess.Popen(
            [PROGRAM, "serve", "--rules", cls.rules, "--expect", DIALOGUES / "household-enu-expect.tsv", "--port", "0"],
            stdout=subprocess.PIPE, text=True)
        cls.address = re.search(r"http://\S+", cls.server.stdout.readline()).group(0)
        cls.browser = open_browser()

    @classmethod
    def tearDownClass(cls):
        cls.browser.quit()
        cls.server.terminate()
        cls.server.wait(timeout=20)
        cls.server.stdout.close()
        shutil.rmtree(cls.folder)
        assert cls.server.returncode == 0, cls.server.returncode

    def setUp(self):
        self.browser.get(self.address)
        self.wait_for(lambda: "rules," in self.by_id("status").text)

    def tearDown(self):
        self.keep_picture(self._testMethodName)
        errors = [entry["message"] for entry in self.browser.get_log("browser") if entry["level"] == "SEVERE"]
        self.assertEqual(errors, [])

    def keep_picture(self, name):
        self.browser.save_screenshot(str(ARTEFACTS / f"{name}.png"))

    def by_id(self, id):
        return self.browser.find_element(By.ID, id)

    def all(self, selector):
        return self.browser.find_elements(By.CSS_SELECTOR, selector)

    def wait_for(self, condition):
        return WebDriverWait(self.browser, 20, ignored_exceptions=[Exception]).until(lambda _: condition())

    def open_tab(self, name):
        self.by_id(f"tab-{name}").click()
        self.wait_for(lambda: self.by_id(f"view-{name}").is_displayed())

    def type_sentence(self, sentence):
        self.by_id("sentence").clear()
        self.by_id("sentence").send_keys(sentence)

    def best_id(self):
        return self.all("#matches button")[0].get_attribute("data-id")

    def test_typing_ranks_and_strikes_unknown_words(self):
        self.type_sentence("it is dark in here, switch on a floccinaucin lamp")
        self.wait_for(lambda: self.best_id() == "101")
        self.wait_for(lambda: [word.text for word in self.all("#understood s")] == ["floccinaucin"])
        self.type_sentence("play a song")
        self.wait_for(lambda: self.best_id() == "201")

    def test_a_click_shows_why_as_a_grid(self):
        self.type_sentence("play a loud song")
        second = self.wait_for(lambda: self.all("#matches button")[1])
        chosen = second.get_attribute("data-id")
        score = float(second.find_element(By.CSS_SELECTOR, ".score").text)
        second.click()
        self.wait_for(lambda: f"Why rule {chosen}:" in self.by_id("why").text)
        self.assertIn("song", [head.text for head in self.all("#why-grid th[scope=row]")])
        shown = [float(cell.text.replace("·", "0")) for cell in self.all("#why-grid td") if cell.text]
        self.assertAlmostEqual(sum(shown), score, delta=0.006 * len(shown))

    def test_the_map_has_a_mark_a_sentence_and_the_typed_one(self):
        self.type_sentence("turn on the lamp")
        self.open_tab("map")
        sentences = int(re.search(r"(\d+) sentences", self.by_id("status").text).group(1))
        self.wait_for(lambda: len(self.all("#map .point")) >= sentences - 1)
        self.wait_for(lambda: self.by_id("typed").get_attribute("visibility") == "visible")
        self.keep_picture("map")
        mark = self.all("#map .point")[3]
        mark.send_keys(Keys.ENTER)
        self.wait_for(lambda: self.by_id("sentence").get_property("value") == mark.get_attribute("data-text"))

    def test_rules_are_compared_and_checked(self):
        self.open_tab("rules")
        rules = int(re.search(r"(\d+) rules", self.by_id("status").text).group(1))
        self.wait_for(lambda: len(self.all("#closeness-grid tr")) == rules + 1)
        self.assertEqual(len(self.all("#closeness-pairs tr")), 16)
        self.assertTrue(self.all("#findings td") or "Nothing" in self.by_id("findings").text)

    def test_a_moved_threshold_keeps_fewer_answers(self):
        self.open_tab("expectations")
        self.wait_for(lambda: self.by_id("threshold-effect").text)
        line = self.by_id("threshold-line")
        before = (self.kept(), float(line.get_attribute("x1")))
        self.by_id("threshold").send_keys(Keys.END)
        self.wait_for(lambda: float(line.get_attribute("x1")) > before[1])
        self.assertLess(self.kept(), before[0])

    def kept(self):
        return int(re.search(r": (\d+) of", self.by_id("threshold-effect").text).group(1))

    def test_the_page_follows_the_rules_file_and_tells_what_is_wrong_with_it(self):
        original = self.rules.read_text(encoding="utf-8")
        self.rules.write_text(original + "9001\tFeed the hippopotamus.\n", encoding="utf-8")
        self.type_sentence("feed the hippopotamus")
        self.wait_for(lambda: self.best_id() == "9001")
        self.rules.write_text(original + "no number\n", encoding="utf-8")
        self.wait_for(lambda: "rules.tsv:" in self.by_id("problem").text)
        self.rules.write_text(original, encoding="utf-8")
        self.wait_for(lambda: not self.by_id("problem").is_displayed())
        self.wait_for(lambda: self.best_id() != "9001")

    def test_text_from_files_stays_text(self):
        self.type_sentence(MARKUP)
        self.wait_for(lambda: self.all("#matches button .text")[0].text == MARKUP)
        self.assertEqual(self.browser.title, "velmora workbench")

    def test_the_keyboard_alone_gets_everywhere(self):
        self.by_id("tab-match").send_keys(Keys.ARROW_RIGHT, Keys.NULL)
        self.assertTrue(self.by_id("view-map").is_displayed())
        self.by_id("tab-map").send_keys(Keys.ARROW_LEFT)
        self.assertTrue(self.by_id("view-match").is_displayed())

    def test_a_phone_needs_no_sideways_scrolling(self):
        phone = {"width": 390, "height": 800, "deviceScaleFactor": 1, "mobile": True}
        self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", phone)
        self.addCleanup(self.browser.execute_cdp_cmd, "Emulation.clearDeviceMetricsOverride", {})
        self.type_sentence("play a song")
        self.wait_for(lambda: self.all("#why-grid td"))
        width = "return document.documentElement.scrollWidth - document.documentElement.clientWidth"
        self.assertLessEqual(self.browser.execute_script(width), 0)


if __name__ == "__main__":
    PROGRAM, DIALOGUES, ARTEFACTS = (pathlib.Path(argument).resolve() for argument in sys.argv[1:4])
    ARTEFACTS.mkdir(parents=True, exist_ok=True)
    unittest.main(argv=sys.argv[:1], verbosity=2)
