// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <string_view>

/// The three descriptors that a program is started with.
namespace vantor::hosts::common {

/// Takes the number of each standard stream that is closed, so that no file and no connection gets it and is
/// written into by mistake. Using it still fails, as with a closed one. First in main.
void holdClosedStreams();

/// Lets nobody in this process wait for the reader of standard error, not the libraries either: what a pipe
/// or a terminal does not take at once is dropped. Other processes that write there still wait for theirs.
void letNobodyWaitForErrors();

/// Writes what a descriptor's reader takes at once; the rest is dropped.
void writeUnhurried(int descriptor, std::string_view text);

/// Says "program: text" on standard error, as one line without control characters. Never waits: a window
/// whose errors nobody reads goes on.
void complain(std::string_view program, std::string_view text);

/// Lets a write that cannot be done fail, instead of ending the program: to a pipe without a reader (SIGPIPE)
/// and beyond the size that files may have (SIGXFSZ, setrlimit(2)).
void letWritesFail();

/// A stream for the log over a descriptor: what the reader does not take at once is dropped, so that a pipe
/// which nobody reads, or a terminal whose output was stopped, does not hold the program up. Neither is ever
/// closed. Null where there is no memory.
[[nodiscard]] std::FILE* unhurriedStream(int descriptor);

} // namespace vantor::hosts::common
