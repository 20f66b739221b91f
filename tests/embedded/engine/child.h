#pragma once

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

} // namespace tamarok::embedded::test
