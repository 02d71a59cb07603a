// Guards the runs under other locales: a locale that failed to load would
// leave the process in "C" and let those runs pass without testing anything.
#include <QByteArray>

#include <clocale>
#include <cstring>

#include <gtest/gtest.h>

namespace {

TEST(ProcessLocale, isTheRequestedOne)
{
    const QByteArray requested = qgetenv("TESSARY_TEST_LOCALE");
    if (requested.isEmpty())
        GTEST_SKIP() << "runs only under a requested locale";
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), requested.constData());
    EXPECT_STREQ(std::setlocale(LC_TIME, nullptr), requested.constData());
}

} // namespace
