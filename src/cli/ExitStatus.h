#pragma once

namespace cli {

/// Exit statuses of every command.
enum class ExitStatus : int {
  Ok = 0,
  Findings = 1,  ///< done, but something was reported
  Usage = 2,     ///< the call is wrong
  InputUnreadable = 3,
  OutputFailed = 4,
  MissingResources = 5,  ///< files of the program itself are not where they should be
  InternalError = 70,
  Interrupted = 130  ///< by Ctrl+C or SIGTERM
};

}  // namespace cli
