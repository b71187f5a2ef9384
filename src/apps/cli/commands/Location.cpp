#include <memory>
#include <optional>

#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/bills/BillLookup.h"
#include "cli/commands/Commands.h"
#include "cli/input/TextInput.h"
#include "cli/settings/SettingValue.h"
#include "cli/terminal/DisplayText.h"
#include "common/DataFolderState.h"
#include "common/PlaceChange.h"
#include "common/Sentences.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"
#include "storage/Settings.h"

namespace tallyvane::cli {

namespace {

using programs::Carrying;
using programs::Place;

struct Options {
  std::optional<std::string> folder;
  bool dropbox = false;
  bool reset = false;
  bool copy = false;
  bool adopt = false;
  bool finish = false;
};

void showLocation(Session& session) {
  const Platform& platform = session.platform;
  const std::string folder = dataFolder(platform);
  const bool isOwn = boolSetting(platform.defaults, key::CustomLocationEnabled);
  // translators: the kind of place where the data folder is: the usual one, a Dropbox, or another that was chosen
  const std::string kind = !isOwn                                                    ? marked("usual")
                           : boolSetting(platform.defaults, key::DropboxSyncEnabled) ? marked("dropbox")
                                                                                     : marked("chosen");
  const bool isThere = platform.files.isFolder(folder);
  const std::optional<std::size_t> bills = programs::billsListedIn(platform, folder);
  const std::optional<std::string> unfinished = programs::unfinishedChange(platform);
  // What is there in the middle of a change says nothing of the bills.
  const bool tellsBills = bills && !unfinished;
  if (session.json) {
    return printJson(session.console, {{"folder", folder.empty() ? Json(nullptr) : Json(folder)},
                                       {"kind", kind},
                                       {"there", isThere},
                                       {"bills", tellsBills ? Json(*bills) : Json(nullptr)},
                                       {"unfinished", unfinished ? Json(*unfinished) : Json(nullptr)}});
  }
  session.console.line(sentence("Data folder: {}", folder.empty() ? translated("cannot be told") : printable(folder)));
  // translators: what kind of place that is: usual, dropbox or chosen
  session.console.line(sentence("Kind: {}", translated(kind)));
  session.console.line(unfinished ? printable(*unfinished)
                       : isThere  ? sentence("Bills: {}", bills.value_or(0))
                                  : translated("It is not there now."));
}

/// A folder that is itself named as the data folder stands for the one that holds it.
Place ownPlace(const Platform& platform, const Options& options) {
  constexpr std::string_view belowDropbox = "/Apps/Tallyvane";
  if (!options.folder) {
    Place place = programs::currentPlace(platform);
    if (!place.folder)
      wrongUsage(sentence("Name the Dropbox folder: {}", "tallyvane location --set ~/Dropbox --dropbox"));
    place.dropbox = true;
    return place;
  }
  const std::string path = absolutePath(*options.folder);
  if (path.empty()) wrongUsage(translated("The name must not be empty."));
  const Value bookmark = settingInput(platform, findSetting(std::string(key::CustomLocationBookmark)), path);
  Place place{platform.bookmarks.resolve(*bookmark.get<Data>()), options.dropbox};
  if (place.dropbox && place.folder && place.folder->ends_with(belowDropbox))
    place.folder->resize(place.folder->size() - belowDropbox.size());
  return place;
}

/// What is asked for, where it loses and mixes nothing: the new place is free, or what is there is to be used.
Carrying carryingTo(const Platform& platform, const std::string& to, bool isUsual, const Options& options) {
  FileStore& files = platform.files;
  const std::string from = dataFolder(platform);
  const bool isInside = files.liesIn(to, from);
  const bool isAround = files.liesIn(from, to);
  if (isInside && isAround) couldNot(sentence("The data folder is there already: {}.", from));
  if (isInside || isAround) couldNot(sentence("{} and {} lie in one another.", from, to));
  const std::string backups = QMBillsLoader{platform}.tallyvaneBackupPath();
  if (!isUsual && files.liesIn(to, backups))
    couldNot(sentence("Choose a folder outside of {}, where backups go.", backups));
  const bool isTaken = files.exists(to) && !programs::isEmptyFolder(files, to);
  const std::optional<std::size_t> found = programs::billsListedIn(platform, to);
  if (options.adopt) {
    if (found || (isUsual && !isTaken)) return Carrying::adopt;
    couldNot(sentence("There is no data folder with bills at the new place: {}.", to));
  }
  const bool hasNothing = programs::isEmptyFolder(files, from);
  if (found && hasNothing && !options.copy) return Carrying::adopt;
  if (found)
    couldNot(countedSentence(
        *found, "There is {} bill in {} already. Add --adopt to use it from now on; the others stay in {}.",
        "There are {} bills in {} already. Add --adopt to use these from now on; the others stay in {}.", *found, to,
        from));
  if (isTaken) couldNot(sentence("{} is there already, but has no list of bills. Move it away first.", to));
  if (from.empty()) (void)requireDataFolder(platform);
  if (!files.isFolder(from))
    couldNot(sentence("The data folder is not there: {}.", from) + " " +
             translated("Connect the disk that it is on, or add --adopt to use the one at the new place."));
  return options.copy ? Carrying::copy : Carrying::move;
}

[[noreturn]] void failChange(const Platform& platform, const std::string& reason) {
  const auto unfinished = programs::unfinishedChange(platform);
  couldNot(sentence("Not done: {}.", reason) + (unfinished ? " " + *unfinished : ""));
}

void sayWhereNow(Session& session, const std::string& said) {
  if (session.json) return showLocation(session);
  session.console.line(printable(said));
}

void changeLocation(Session& session, const Options& options) {
  const Platform& platform = session.platform;
  const Place place = options.reset ? Place() : ownPlace(platform, options);
  const std::string from = dataFolder(platform);
  const std::string to = programs::dataFolderAt(platform, place);
  Carrying carrying = Carrying::move;
  Result<> outcome;
  session.write([&] {
    if (const auto unfinished = programs::unfinishedChange(platform)) couldNot(*unfinished);
    carrying = carryingTo(platform, to, !place.folder, options);
    outcome = programs::changePlace(platform, place, carrying);
  });
  if (!outcome) failChange(platform, outcome.error());
  const std::size_t bills = programs::billsListedIn(platform, to).value_or(0);
  const std::string now = countedSentence(bills, "The data folder is now {} ({} bill).",
                                          "The data folder is now {} ({} bills).", to, bills);
  const bool isLeft = carrying != Carrying::move && !from.empty();
  sayWhereNow(session, isLeft ? now + " " + sentence("The one before stays in {}.", from) : now);
}

void finishChange(Session& session) {
  const Platform& platform = session.platform;
  Result<> outcome;
  session.write([&] {
    const auto change = programs::begunPlaceChange(platform);
    if (!change) couldNot(translated("No change of place was interrupted."));
    outcome = programs::finishPlaceChange(platform, *change);
  });
  if (!outcome) failChange(platform, outcome.error());
  sayWhereNow(session, sentence("The data folder is {}.", dataFolder(platform)));
}

void runLocation(Session& session, const Options& options) {
  const bool changes = options.folder || options.dropbox || options.reset;
  if (options.finish) return finishChange(session);
  if (changes) return changeLocation(session, options);
  if (options.copy || options.adopt) wrongUsage(translated("Say where to: --set FOLDER, --dropbox or --reset."));
  showLocation(session);
}

}  // namespace

void addLocation(CLI::App& app, Invocation& invocation) {
  auto options = std::make_shared<Options>();
  CLI::App* command = addCommand(
      app, invocation,
      {"location", marked("Show where the data folder is, or move it"), "tallyvane location --set /media/disk"},
      [options](Session& session) { runLocation(session, *options); });
  CLI::Option* set = command->add_option("--set", options->folder,
                                         "Keep the data folder in this folder; what is there now moves with it");
  CLI::Option* dropbox =
      command->add_flag("--dropbox", options->dropbox, "That folder is a Dropbox: the data go into its Apps/Tallyvane");
  CLI::Option* reset = command->add_flag("--reset", options->reset, "Move the data folder back to its usual place");
  CLI::Option* copy = command->add_flag("--copy", options->copy, "Leave a copy where the data folder was");
  CLI::Option* adopt = command->add_flag("--adopt", options->adopt,
                                         "Use the data folder that is there; the one of now stays where it is");
  CLI::Option* finish = command->add_flag("--finish", options->finish, "End a change of place that was interrupted");
  set->type_name("FOLDER");
  reset->excludes(set)->excludes(dropbox);
  copy->excludes(adopt);
  finish->excludes(set)->excludes(dropbox)->excludes(reset)->excludes(copy)->excludes(adopt);
}

}  // namespace tallyvane::cli
