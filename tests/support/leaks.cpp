// What the contract of the library says is never freed, for LeakSanitizer. Everything else that a
// test leaves behind is an error.
//
// Two more things are never freed by the library, but a test can and must free them: the copies of
// session passwords in the state variables (freeSessionPasswords()), and what a setter abandons.

// A disk item's list of names deletes none of them, since the clones of the item share them.
static const char kNeverFreed[] =
    "leak:BKQDiskItem::addFile\n"
    "leak:copyDoubled<RWCollectableString>\n";

// LeakSanitizer looks for it from its own library.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
  return kNeverFreed;
}

// A suppression that matched says nothing: what a program prints is compared.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_options() {
  return "print_suppressions=0";
}
