// The matcher for free user sentences: the class a host works with.
//
// A working matcher is set up in this order:
//
//   VX::Dialog::Velmora matcher;
//   std::string base = "/opt/dialog", language = "enu", unused;
//   matcher.setModel(base, language);
//   matcher.loadDialogVectors(unused, {{1, {"switch on the light"}}, {2, {"play some music"}}});
//   matcher.activeAllRules(unused);
//   std::vector<std::pair<double, std::vector<int>>> matches;
//   matcher.matchInput("please turn the lamp on", matches, unused);
//
// Each object is to be used from one thread at a time, matchInput included; different objects may
// be used from different threads. Results report failures. Operations also let through
// std::bad_alloc, and where it is said std::out_of_range or a boost::filesystem::filesystem_error.
//
// 128 KiB of stack are enough for every operation. Sentences may have any length, but time and
// memory grow with it: a host that takes text from strangers cuts it, say at 10,000 bytes. Where a
// damaged model or snapshot is possible, a score can be NaN: write !(score >= threshold), never
// score < threshold, to refuse an answer.
//
// Tested by tests/api/velmora-test.cpp.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <velmora/debug.hpp>
#include <velmora/export.hpp>

namespace VX::Dialog {

class VelmoraPrivate;

/// Matches sentences against the rules of a dialogue.
///
/// Several operations carry a string reference that is neither read nor written; it is part of the
/// published signatures.
class VELMORA_EXPORT Velmora {
 public:
  /// An engine without model and rules: matchInput answers -1.
  Velmora();
  ~Velmora();
  Velmora(const Velmora&) = delete;
  Velmora& operator=(const Velmora&) = delete;

  /// The language codes "frf", "enu", "jpj", whether or not their models are installed.
  std::vector<std::string> getAvailableLanguages();

  /// Selects and loads the model of a language.
  ///
  /// path       base directory; the model is looked for in <path>/<language>/model/, and when
  ///            there is no <path>/<language>/, among the installed data
  /// language   one of the codes above, or any name that has a directory
  ///
  /// True: a place was found and its files were read as far as they could be; a missing or damaged
  /// file is only logged. False: there is none; the earlier model stays in force, and only
  /// the language that the next compilation stems with has changed. Compiled rules and the active
  /// set stay as they were: compile the rules again on a fresh object after a change of language.
  /// Throws boost::filesystem::filesystem_error when the file system can't be asked, and
  /// std::bad_alloc when the header of "model.conf" promises more than memory holds: the header is
  /// believed, whatever the size of the file. velmora::Model::load checks a directory first.
  bool setModel(std::string& path, std::string& language);

  /// Reads the files of the selected model once more. False: there is no scalar file "model".
  bool loadSemanticModels(std::string& ignored);

  /// Compiles rules: stems their sentences, folds every distinct set of known stems into the latent
  /// space, and saves the result as "newindex" in the model directory (a failure to write is not
  /// reported).
  ///
  /// rules   rule id to sentences
  ///
  /// Activates nothing: follow with activeAllRules or updateActiveRules. Meant for a fresh object:
  /// a second call appends its vectors after those of the first while its rows start at 0 again.
  /// True unless the vectors could not be computed. Throws std::out_of_range while saving, as
  /// loadDialogVectorsFromFile does: a second call on one object does so when an id of the first is
  /// missing among the rules of the second.
  bool loadDialogVectors(std::string& ignored, std::map<int, std::vector<std::string>> rules);

  /// Warm start: takes the vectors of rules with known stem sets from a snapshot.
  ///
  /// path              name of a snapshot in the model directory ("newindex", "index")
  /// rules             rule id to sentences
  /// compileNewRules   false: rules with other stem sets are ignored, no file is written, and of
  ///                   several rules with one stem set only the one with the lowest id is loaded;
  ///                   true: they are compiled, and all is saved as "index"
  ///
  /// False, with nothing but the stemmer changed, when there is no such file. The snapshot is not
  /// tied to a model: one made with another model gives wrong scores. So does one that was cut
  /// short, which is read without a complaint: a rule whose stored vector has lost all but its
  /// first value scores exactly 1 for half of all sentences. Keep a snapshot under a name of your
  /// own only after you have checked that it is whole (four lines a record, the last one with its
  /// newline, equally many values in every fourth line): write, check, copy, rename.
  /// Throws boost::filesystem::filesystem_error when the file system can't be asked, and
  /// std::out_of_range ("map::at:  key not found") while saving, when ids of an earlier load
  /// on this object are the lowest of their row and are not among the rules of this one.
  bool loadDialogVectorsFromFile(const std::string path,
                                 std::map<int, std::vector<std::string>> rules,
                                 const std::string& ignored, bool compileNewRules);

  /// Ranks the active rules for one sentence (UTF-8).
  ///
  /// matches   one entry for each distinct score, best first, is appended: the score, a cosine, and
  ///           the ids that have it, ascending. At most 21 entries; there is no threshold.
  ///
  /// 1: matching ran. A sentence without a known word gives a single entry of score 0 with all
  /// active rules. -1, matches untouched: no vocabulary, no latent model, no active rule, or
  /// nothing compiled yet.
  /// An active id that has no row of its own is scored as row 0. Throws std::out_of_range when a
  /// row lies outside the compiled vectors, above all when no rule has a known word.
  int matchInput(const std::string sentence,
                 std::vector<std::pair<double, std::vector<int>>>& matches, std::string& ignored);

  /// Adds every compiled rule to the active set.
  void activeAllRules(std::string& ignored);
  /// Adds ids to the active set; it does not narrow it. Ids are not checked.
  void updateActiveRules(std::set<int> rule_ids, std::string& ignored);
  /// Takes ids out of the active set.
  void updateDeactiveRules(std::set<int> rule_ids, std::string& ignored);

  /// Cosine of the latent vectors of two lists of stems; 0 when one has no known word. Stems are
  /// taken as they come, and a repeated stem counts twice. Needs a model, no rules.
  double simpleDist(std::vector<std::string> first, std::vector<std::string> second,
                    std::string& ignored);

  /// Always an empty map: the published operation drops what it computes, and only its log lines
  /// can be seen: words outside the vocabulary, at level info. No other operation reports them.
  std::map<double, std::string> getSpecificities(const std::string sentence, std::string& ignored);

  /// Computes the cosine of every pair of words of the vocabulary and prints the table to standard
  /// output. For analysis of small vocabularies: time, memory and output grow with the square of
  /// the vocabulary. Always 1.
  int loadWordDistIndex(std::string& ignored);

 private:
  std::unique_ptr<VelmoraPrivate> engine_;
};

}  // namespace VX::Dialog
