#include "KORLumSessionFileType.h"

#include <iostream>  // prepares the stream library for trace output

// Built at load in this order, destroyed at unload in the reverse order.
const KORUnicodeString KORLumSessionFileSuffix_None("");
const KORUnicodeString KORLumSessionFileSuffix_Graph("hub");
const KORUnicodeString KORLumSessionFileSuffix_Query("qry");
