// The workbench: tabs, the typed sentence, and a look every second whether the rules have changed.
import {get} from "./api.js";
import {afterPause, byId} from "./dom.js";
import * as expectations from "./expectations-view.js";
import * as map from "./map-view.js";
import * as matches from "./match-view.js";
import * as rules from "./rules-view.js";

const kMillisecondsBetweenLooks = 1000;
let revision = 0;

function tell(problem) {
  byId("problem").hidden = problem === null;
  byId("problem").textContent = problem ?? "";
}

// What goes wrong is told in the page; the next success takes it away.
async function attempt(work) {
  try {
    await work();
  } catch (error) {
    tell(error instanceof TypeError ? "The server does not answer: is velmora serve still running?" : error.message);
  }
}

function selectTab(tab) {
  for (const other of document.querySelectorAll("[role=tab]")) {
    const selected = other === tab;
    other.setAttribute("aria-selected", String(selected));
    other.tabIndex = selected ? 0 : -1;
    byId(other.getAttribute("aria-controls")).hidden = !selected;
  }
  byId("query").hidden = tab.id !== "tab-match" && tab.id !== "tab-map";
}

function startTabs() {
  const tabs = [...document.querySelectorAll("[role=tab]")];
  const steps = {ArrowRight: 1, ArrowLeft: -1};
  for (const tab of tabs) {
    tab.addEventListener("click", () => selectTab(tab));
    tab.addEventListener("keydown", (event) => {
      if (event.key in steps) {
        const next = tabs[(tabs.indexOf(tab) + steps[event.key] + tabs.length) % tabs.length];
        selectTab(next);
        next.focus();
      }
    });
  }
}

async function showSentence() {
  const sentence = byId("sentence").value;
  await Promise.all([matches.show(sentence), map.show(sentence)]);
}

function choose(sentence) {
  byId("sentence").value = sentence;
  selectTab(byId("tab-match"));
  attempt(showSentence);
}

// Asks for the state of the server, and for everything anew when the rules are not those of the last look.
async function look() {
  const status = await get("status");
  byId("status").textContent = `${status.rules_file}: ${status.rules} rules, ${status.sentences} sentences; ` +
    `model ${status.language}, ${status.dimension} dimensions`;
  if (status.revision !== revision) {
    await Promise.all([map.reload(), rules.reload(), expectations.reload(status.expectations)]);
    revision = status.revision;
    await showSentence();
  }
  tell(status.error);
}

async function keepLooking() {
  await attempt(look);
  setTimeout(keepLooking, kMillisecondsBetweenLooks);
}

startTabs();
matches.start();
map.start(choose);
rules.start();
byId("sentence").addEventListener("input", afterPause(() => attempt(showSentence)));
byId("query").addEventListener("submit", (event) => event.preventDefault());
keepLooking();
