#include "KORLumSessionFileType.h"

#include <iostream>  // prepares the stream library for trace output

// Built at load in this order, destroyed at unload in the reverse order.
// These exported constants are part of the interface and must be built at
// load; only a failed allocation could throw there, and nothing can recover
// from that while a library loads.
// NOLINTBEGIN(cert-err58-cpp)
const KORUnicodeString KORLumSessionFileSuffix_None("");
const KORUnicodeString KORLumSessionFileSuffix_Graph("hub");
const KORUnicodeString KORLumSessionFileSuffix_Query("qry");
// NOLINTEND(cert-err58-cpp)
