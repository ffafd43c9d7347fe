#include "cli/edit/DocumentSettings.h"
#include "cli/edit/EditCommands.h"
#include "cli/edit/EditSession.h"
#include "document/PackageLayout.h"
#include "foundation/UserDefaults.h"

namespace cli {

namespace {

const QString modeOption = QStringLiteral("mode");
const QString durationOption = QStringLiteral("duration");
const QString replaceOption = QStringLiteral("replace");

void addOptions(CommandOptions& options) {
  options.value({modeOption}, QStringLiteral("NAME"),
                QStringLiteral("its video format; your default format without it"));
  options.value({durationOption}, QStringLiteral("SECONDS"),
                QStringLiteral("its length; 5 seconds without it"));
  options.flag(replaceOption, QStringLiteral("in place of a document that is there already"));
}

EditCommand::Done run(EditCall& call) {
  const QString& path = call.words[0];
  if (!document::PackageLayout::isPackageName(path))
    return misused(
        QStringLiteral("the name of a document ends in .composition, not '%1'").arg(path));
  auto resolution =
      model::VideoResolution::defaultVideoResolution(foundation::UserDefaults::standard());
  if (call.options.isSet(modeOption)) {
    const auto named = DocumentSettings::mode(call.options.text(modeOption));
    if (!named) return tl::unexpected(named.error());
    resolution = *named;
  }
  if (resolution.width() == 0) return misused(QStringLiteral("--mode NAME is needed"));
  std::optional<double> duration;
  if (call.options.isSet(durationOption)) {
    const auto given =
        DocumentSettings::duration(call.options.text(durationOption), resolution.timecodeRate());
    if (!given) return tl::unexpected(given.error());
    duration = *given;
  }
  const auto existing = call.options.isSet(replaceOption) ? EditSession::Existing::Replace
                                                          : EditSession::Existing::Keep;
  if (auto made = call.session.create(path, resolution, existing); !made) return made;
  const auto opened = call.session.open(path);
  if (opened && duration) (*opened)->composition().setDuration(*duration);
  return {};
}

}  // namespace

EditCommand newCommand() {
  return {QStringLiteral("new"),
          QStringLiteral("OUT.composition [--mode NAME] [--duration SECONDS] [--replace]"),
          QStringLiteral("Makes an empty document."),
          1,
          1,
          run,
          EditCommand::Document::Made,
          addOptions};
}

}  // namespace cli
