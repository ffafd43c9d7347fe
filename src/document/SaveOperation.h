#pragma once

namespace document {

/// Why a document is written.
enum class SaveOperation {
  Save,    ///< to where it lies
  SaveAs,  ///< to another place, where it lies from then on
  SaveTo   ///< a copy; the document stays where it is, with its changes
};

}  // namespace document
