#include "tamarok/error.h"

#include <utility>

namespace tamarok {

Error::Error(std::int32_t errorNumber, std::string errorDescription, std::string errorSource) :
    std::runtime_error{""}, number{errorNumber}, source{std::move(errorSource)}, description{
                                                                                     std::move(errorDescription)}
{
    compose();
}

Error& Error::addContext(std::string_view context)
{
    description.insert(0, std::string{context} + ": ");
    compose();
    return *this;
}

const char* Error::what() const noexcept
{
    return text_.c_str();
}

void Error::compose()
{
    text_ = source.empty() ? description : source + ": " + description;
}

} // namespace tamarok
