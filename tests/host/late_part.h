#pragma once

/// A shared object of a host, which knows nothing of the library: it calls back when its own static objects are
/// destroyed. Linked behind the library, it goes down after it.
extern "C" [[gnu::visibility("default")]] void callWhenThisPartGoes(void (*call)());
