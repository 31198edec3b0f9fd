// The one place that pins what a machine could change: locale, language, time zone and fonts.

#include <clocale>
#include <cstdlib>
#include <ctime>

#include <gtest/gtest.h>

int main(int count, char** arguments) {
    setenv("LC_ALL", "C", 1);
    setenv("TZ", "UTC", 1);
    setenv("FONTCONFIG_FILE", MELKAR_TEST_FONTS, 1);
    tzset();
    std::setlocale(LC_ALL, "C");
    testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
