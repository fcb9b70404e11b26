#pragma once

#include <QCoreApplication>
#include <QTest>

namespace lucentra {

using TestMain = int (*)(int argc, char **argv);

/// Creates an application and runs the tests of a class. Arguments are those of QtTest.
template <typename Test, typename Application = QCoreApplication>
int runTests(int argc, char **argv)
{
    if constexpr (requires { Test::initMain(); })
        Test::initMain();
    Application application(argc, argv);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

/// Lets the program run a class of this name.
void addTestClass(const char *name, TestMain run);

/// Adds a class to the tests of its program: a static object next to the class. Each program takes seconds to build,
/// so the classes of a folder share one, which runs the class that its first argument names.
template <typename Test, typename Application = QCoreApplication>
class TestClass
{
public:
    explicit TestClass(TestMain run = runTests<Test, Application>)
    {
        addTestClass(Test::staticMetaObject.className(), run);
    }
};

} // namespace lucentra
