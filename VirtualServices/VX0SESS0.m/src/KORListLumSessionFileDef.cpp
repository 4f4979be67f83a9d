#include "KORListLumSessionFileDef.h"

// Prepares the standard streams for trace output when the library is loaded.
#include <iostream>

// The list's one instance of the value-list pattern, used by the library and
// its clients.
template class KORLumValueList<KORLumSessionFileDef>;
