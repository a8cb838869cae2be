#include "support/SettingsSaveCheck.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

// Arbitrary old settings file bytes and saves (see checkSettingsSaveInput):
// a save that breaks a promise aborts with the faults, so that the input is
// kept and belongs under tests/data/settings-corpus.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QStringList faults = qf::test::checkSettingsSaveInput(
        QByteArrayView(reinterpret_cast<const char*>(data), qsizetype(size)));
    if (faults.isEmpty())
        return 0;
    std::fprintf(stderr, "%s\n", qPrintable(faults.join(QLatin1Char('\n'))));
    std::abort();
}
