#include <utility>

#include "engine.h"
#include "failures.h"
#include "parameters.h"
#include "tamarok_tsql/names.h"

namespace tamarok::embedded {

namespace {

using tsql::sameName;

/// The arguments in the order of the procedure's parameters.
std::vector<Variant> arrange(const Procedure& procedure, std::span<const tsql::Argument> arguments)
{
    const std::vector<ProcedureParameter>& parameters = procedure.parameters;
    if (arguments.size() > parameters.size()) {
        throw failure(native::tooManyArguments,
                      "Procedure or function " + procedure.name + " has too many arguments specified.");
    }
    std::vector<Variant> values(parameters.size());
    std::vector<bool> given(parameters.size());
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        // An argument goes to the parameter of its name, or else of its position.
        std::size_t place = i;
        if (!arguments[i].name.empty()) {
            for (place = 0; place < parameters.size() && !sameName(parameters[place].name, arguments[i].name);) {
                ++place;
            }
        }
        if (place == parameters.size()) {
            throw failure(native::argumentUnknown,
                          "@" + arguments[i].name + " is not a parameter for procedure " + procedure.name + ".");
        }
        values[place] = arguments[i].value;
        given[place] = true;
    }
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (parameters[i].required && !given[i]) {
            throw failure(native::parameterMissing, "Procedure or function '" + procedure.name +
                                                        "' expects parameter '@" + parameters[i].name +
                                                        "', which was not supplied.");
        }
    }
    return values;
}

/// Values of a procedure have no declared type: they are bound as they are.
std::vector<ado::Parameter> asParameters(std::span<const Variant> values)
{
    std::vector<ado::Parameter> parameters;
    for (const Variant& value : values) {
        ado::Parameter& parameter = parameters.emplace_back();
        parameter.type = ado::DataType::Variant;
        parameter.value = value;
    }
    return parameters;
}

} // namespace

/// What a procedure sees of the engine while it runs.
class Engine::ProcedureRun final : public ProcedureScope {
public:
    /// Outside of a transaction the procedure may be run again when it meets a held row. SET NOCOUNT and SET XACT_ABORT
    /// inside a procedure end with it. Procedures begin with XACT_ABORT ON, as the server's scripts of them do.
    explicit ProcedureRun(Engine& engine) :
        engine_{engine}, outerRepeatable_{engine.repeatable_}, outerNoCount_{std::exchange(engine.noCount_, false)},
        outerXactAbort_{std::exchange(engine.xactAbort_, true)}
    {
        engine_.repeatable_ = outerRepeatable_ || !engine_.database_->inTransaction();
    }
    ProcedureRun(const ProcedureRun&) = delete;
    ProcedureRun& operator=(const ProcedureRun&) = delete;
    ~ProcedureRun() override
    {
        engine_.repeatable_ = outerRepeatable_;
        engine_.noCount_ = outerNoCount_;
        engine_.xactAbort_ = outerXactAbort_;
    }

    std::int64_t execute(std::string_view statement, std::span<const Variant> parameters) override
    {
        return engine_.executeText(statement, asParameters(parameters));
    }

    std::vector<std::vector<Variant>> query(std::string_view statement, std::span<const Variant> parameters) override
    {
        const std::vector<ado::Parameter> sent = asParameters(parameters);
        ado::Statement wanted;
        wanted.text = statement;
        wanted.parameters = sent;
        // The statements of a procedure share the time-out of the call.
        wanted.timeoutSeconds = engine_.database_->deadline().seconds();
        const auto cursor = engine_.openText(wanted);
        cursor->bufferRows();
        std::vector<std::vector<Variant>> rows;
        while (cursor->next()) {
            std::vector<Variant>& row = rows.emplace_back();
            for (std::size_t column = 0; column < cursor->columns().size(); ++column) {
                row.push_back(cursor->value(column));
            }
        }
        return rows;
    }

private:
    Engine& engine_;
    bool outerRepeatable_;
    bool outerNoCount_;
    bool outerXactAbort_;
};

/// A call through the recordset model: the text is the name, the parameters are the arguments by position.
void Engine::callProcedure(const ado::Statement& statement)
{
    std::vector<tsql::Argument> arguments(statement.parameters.size());
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        arguments[i].value = typedParameter(statement.parameters[i]);
    }
    runProcedure(statement.text, arguments, {});
}

/// Fills in the statement's parameters, arranges the arguments and runs the body in one transaction. If the body meets
/// a row that another session holds, the transaction is rolled back, the lock awaited, and the body run again.
void Engine::runProcedure(std::string_view name, std::span<const tsql::Argument> arguments, Parameters parameters)
{
    const Procedure* const procedure = procedures_.find(name);
    if (procedure == nullptr) {
        throw failure(native::procedureUnknown, "Could not find stored procedure '" + std::string{name} + "'.");
    }
    std::vector<tsql::Argument> filled{arguments.begin(), arguments.end()};
    for (tsql::Argument& argument : filled) {
        if (argument.parameter >= 0) {
            argument.value = typedParameter(parameterAt(parameters, argument.parameter));
        }
    }
    const std::vector<Variant> values = arrange(*procedure, filled);
    bufferOpenCursors();
    for (;;) {
        try {
            ProcedureRun run{*this};
            runAtomically([&] { procedure->body(run, values); });
            return;
        } catch (const RowBusy& busy) {
            if (repeatable_) {
                throw; // the procedure was called by another one
            }
            waitUntilFree(busy.position, busy.table);
        } catch (const Error& error) {
            doomed_ = doomed_ || rollsBack(error, true);
            throw;
        }
    }
}

} // namespace tamarok::embedded
