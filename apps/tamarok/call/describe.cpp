#include "call/describe.h"

#include <nlohmann/json.hpp>

#include "tamarok/component.h"

namespace tamarok::cli {

namespace {

Json describeParameter(const component::ParameterInfo& parameter)
{
    return {{"name", parameter.name},
            {"type", component::name(parameter.type)},
            {"byref", parameter.byReference},
            {"optional", parameter.optional}};
}

Json describeOperation(const component::OperationInfo& operation)
{
    Json parameters = Json::array();
    for (const auto& parameter : operation.parameters())
        parameters.push_back(describeParameter(parameter));
    return {{"slot", operation.slot},
            {"name", operation.name},
            {"kind", component::name(operation.kind)},
            {"parameters", std::move(parameters)},
            {"result", component::name(operation.result)},
            {"help", operation.help}};
}

} // namespace

Json describeClasses()
{
    Json classes = Json::array();
    for (const auto& classInfo : component::classes()) {
        Json operations = Json::array();
        for (const auto& operation : classInfo.operations)
            operations.push_back(describeOperation(operation));
        classes.push_back({{"name", classInfo.name}, {"help", classInfo.help}, {"operations", std::move(operations)}});
    }
    return {{"classes", std::move(classes)}};
}

} // namespace tamarok::cli
