#include "log-site.hpp"

namespace VX::Dialog::detail {

zu::log::Category* const corpus_log = zu::log::addCategory("LibVelmora.Corpus");
zu::log::Category* const model_log = zu::log::addCategory("LibVelmora.Model");
zu::log::Category* const index_word_log = zu::log::addCategory("LibVelmora.IndexWord");
zu::log::Category* const tfidf_log = zu::log::addCategory("LibVelmora.Tfidf");
zu::log::Category* const data_format_log = zu::log::addCategory("LibVelmora.DataFormat");
zu::log::Category* const query_log = zu::log::addCategory("LibVelmora.Query");
zu::log::Category* const command_log = zu::log::addCategory("LibVelmora.Command");
zu::log::Category* const app_command_log = zu::log::addCategory("LibAppModel.Command");
zu::log::Category* const app_data_log = zu::log::addCategory("Dialog.AppModel.personnalData");

namespace {

// Known to whoever sets levels by name, although nothing is ever logged under them.
[[maybe_unused]] const zu::log::Category* const kSilentCategories[] = {
    zu::log::addCategory("LibVelmora.Learn"),
    zu::log::addCategory("LibVelmora.SimilarityMeasure"),
    zu::log::addCategory("LibVelmora.Updater"),
};

}  // namespace

}  // namespace VX::Dialog::detail
