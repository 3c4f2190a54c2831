#pragma once

// What the fuzz targets share: libFuzzer's entry points and a check that ends the run.

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *daten, size_t groesse);

namespace FuzzHilfe {

// A promise of the parser that the input broke: said on stderr, then abort(), which the
// fuzzer and the corpus test both count as a crash.
void pruefen(bool gehalten, const char *versprechen);

} // namespace FuzzHilfe
