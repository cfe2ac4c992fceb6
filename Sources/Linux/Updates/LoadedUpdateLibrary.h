#pragma once

#include "Linux/Updates/UpdateLibrary.h"

namespace tessary {

/// Whether the framework's library is where Tessary's packages put it. One that others than root
/// and the user could have put there counts as missing, and so does one that could not be used.
bool isUpdateLibraryInstalled();

/// Null until `loadUpdateLibrary` has succeeded.
const TessaryUpdateFunctions* loadedUpdateLibrary();

/// Opens the library, for the rest of the process. Null, with one log line, when it cannot be used.
const TessaryUpdateFunctions* loadUpdateLibrary();

/// Ends the process at once if the library was loaded: the end of its network classes would wait
/// for name servers that do not answer.
void exitIfUpdateLibraryIsLoaded(int status);

} // namespace tessary
