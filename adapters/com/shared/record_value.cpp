#include "record_value.h"

#include <string>

#include "com_pointer.h"
#include "failures.h"
#include "values.h"
#include "wide_text.h"

#include "tamarok/error.h"
#include "tamarok/object.h"

namespace tamarok::com {

namespace {

class RecordValue final : public Object {
public:
    RecordValue(IRecordInfo* description, void* record) : description_{description}
    {
        check(description->RecordCreateCopy(record, &record_), "record");
        Bstr name;
        if (SUCCEEDED(description->GetName(name.put()))) typeName_ = toUtf8(name.get());
    }
    ~RecordValue() override { description_->RecordDestroy(record_); }
    RecordValue(const RecordValue&) = delete;
    RecordValue& operator=(const RecordValue&) = delete;

    std::string_view typeName() const override { return typeName_; }
    Variant get(std::string_view name, std::span<const Variant> args) const override
    {
        if (!args.empty()) throw Error{errors::wrongArgumentCount, std::string{name} + " takes no arguments."};
        const std::wstring wide = toWide(name);
        OwnedVariant value;
        if (FAILED(description_->GetField(record_, wide.c_str(), value.put()))) noSuchMember(name);
        return fromVariant(value.get());
    }

private:
    ComPointer<IRecordInfo> description_;
    void* record_ = nullptr;
    std::string typeName_ = "Record";
};

} // namespace

Variant makeRecordValue(const VARIANT& record)
{
    IRecordInfo* const description = V_RECORDINFO(&record);
    void* const data = V_RECORD(&record);
    if (description == nullptr || data == nullptr)
        throw Error{errors::typeMismatch, "Type mismatch: a record without description."};
    return Variant{std::make_shared<RecordValue>(description, data)};
}

} // namespace tamarok::com
