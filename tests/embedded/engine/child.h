#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/child_process.h"

namespace tamarok::embedded::test {

/// A process of the program lock_child, controlled by its arguments and by lines on its standard input.
class Child : public tamarok::test::ChildProcess {
public:
    explicit Child(const std::vector<std::string>& arguments) :
        ChildProcess{LOCK_CHILD, arguments, tamarok::test::StandardError::Inherited}
    {}
};

/// Runs two processes of the same arguments, begun at the same moment, to the end of their work.
inline void runBeside(const std::vector<std::string>& arguments)
{
    Child first{arguments};
    Child second{arguments};
    ASSERT_EQ(first.line(), "ready");
    ASSERT_EQ(second.line(), "ready");
    first.tell("go");
    second.tell("go");
    EXPECT_EQ(first.line(), "done");
    EXPECT_EQ(second.line(), "done");
}

} // namespace tamarok::embedded::test
