#include "work/yard.h"

namespace tamarok::workbench {

Yard::~Yard()
{
    for (std::thread& thread : threads_)
        thread.join();
}

void Yard::begin()
{
    const std::scoped_lock lock{mutex_};
    ++running_;
}

void Yard::end()
{
    const std::scoped_lock lock{mutex_};
    --running_;
    ended_.notify_all();
}

bool Yard::isEmptyWithin(std::chrono::milliseconds patience)
{
    std::unique_lock lock{mutex_};
    return ended_.wait_for(lock, patience, [this] { return running_ == 0; });
}

} // namespace tamarok::workbench
