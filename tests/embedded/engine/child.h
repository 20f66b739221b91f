#pragma once

#include <string>
#include <vector>

#include "support/child_process.h"

namespace tamarok::embedded::test {

/// A process of the program lock_child, which is told what to do by its arguments and by lines.
class Child : public tamarok::test::ChildProcess {
public:
    explicit Child(const std::vector<std::string>& arguments) :
        ChildProcess{LOCK_CHILD, arguments, tamarok::test::StandardError::Inherited}
    {}
};

} // namespace tamarok::embedded::test
