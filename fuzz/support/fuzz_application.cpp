#include "fuzz/support/fuzz_target.h"

#include <QCoreApplication>
#include <QLoggingCategory>

// Decoders log what they reject; at millions of inputs that is only noise.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication application(*argc, *argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    return 0;
}
