// What the process asks of the system before it does anything else. Already before `main` it opens
// those of the files 0 to 2 that are closed, on the null device.
#pragma once

#include <cstddef>

namespace tessary {

/// Has a refused write come back as an error, where SIGPIPE or SIGXFSZ would end the process, and
/// SIGTERM, SIGINT and SIGHUP end it, also where the process that started this one has ignored
/// them.
void resetSignals();

/// How many files the program has open beside files 0 to 2, with and without windows, and a
/// reserve.
inline constexpr std::size_t filesInAll = 28;
inline constexpr std::size_t filesForWindows = 16;

/// Whether the process may open so many more files. The toolkit's libraries abort without them.
bool canOpenFiles(std::size_t count);

} // namespace tessary
