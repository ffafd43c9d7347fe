#pragma once

#include "cli/CommandOptions.h"

namespace cli {

class EditSession;
struct OpenDocument;

/// One use of an editing command.
struct EditCall {
  const CommandOptions& options;
  QStringList words;  ///< what follows the document
  QString folder;     ///< where relative names of files begin
  EditSession& session;
  OpenDocument* document = nullptr;  ///< none for commands that make one
};

/// A command that works on documents, the same on the command line and as a line of a batch.
struct EditCommand {
  using Done = tl::expected<void, LoadFailure>;
  enum class Document { Made, Read, Changed };

  QString name;
  QString usage;  ///< what follows the name
  QString about;
  qsizetype fewestWords = 0;  ///< after the document
  qsizetype mostWords = 0;    ///< negative: any number
  Done (*run)(EditCall& call) = nullptr;
  Document document = Document::Changed;
  void (*addOptions)(CommandOptions& options) = nullptr;

  /// The command's options, ready to read.
  [[nodiscard]] std::unique_ptr<CommandOptions> syntax() const;
};

}  // namespace cli
