// The one place that pins what a machine could change: locale, language and time zone.

#include <clocale>
#include <cstdlib>
#include <ctime>

#include <gtest/gtest.h>

int main(int count, char** arguments) {
    setenv("LC_ALL", "C", 1);
    setenv("TZ", "UTC", 1);
    tzset();
    std::setlocale(LC_ALL, "C");
    testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
