#include <functional>

#include "list_types.h"
#include "row_text.h"

#include "tamarok/comm_csel.h"
#include "tamarok/mcomm.h"
#include "tamarok/text.h"

namespace tamarok {

namespace {

using catalogue::Join;
using catalogue::ListType;
using catalogue::RowText;

/// Grows one FROM body. The substring test on the whole fragment is the one guard against
/// duplicates.
class FromClause {
public:
    FromClause(const ListType* type, std::string_view versionKey, const TmkVar& session, std::string body) :
        type_{type}, fragments_{session, versionKey, noColumns}, body_{std::move(body)}
    {}

    void add(std::int16_t id)
    {
        warnOfKeyword();
        const Join* join = type_ != nullptr && type_->joins != nullptr ? type_->joins->find(id) : nullptr;
        if (join != nullptr) {
            for (const std::int16_t prerequisite : join->prerequisites) {
                if (prerequisite != 0) {
                    add(prerequisite);
                }
            }
        }
        if (body_.empty() && type_ != nullptr) {
            body_ = type_->base;
        }
        if (join != nullptr) {
            addFragment(*join);
        }
    }

    std::string take() { return std::move(body_); }

private:
    static constexpr catalogue::ColumnTable noColumns{};

    void warnOfKeyword() const
    {
        if (text::trim(text::toUpper(text::left(body_, 4))) == "FROM") {
            mComm::ShowMessage("Error In GetFrom", 0);
        }
    }

    void addFragment(const Join& join)
    {
        std::string filled;
        std::string_view fragment = join.text;
        if (join.composed) {
            fragments_.append(filled, join.text);
            fragment = filled;
        }
        // A plain find would stop at each of the body's many blanks, with which every fragment begins.
        const std::boyer_moore_horspool_searcher searcher{fragment.begin(), fragment.end()};
        const std::string_view body = body_;
        if (std::search(body.begin(), body.end(), searcher) == body.end() && !fragment.empty()) {
            body_ += fragment;
        }
    }

    const ListType* type_;
    RowText fragments_;
    std::string body_;
};

} // namespace

std::string Comm_CSel::GetFrom(std::string_view Typ, std::int16_t ID, std::string_view strFrom,
                               std::string_view strVer_type, const TmkVar& tmkVar) const
{
    FromClause from{catalogue::findListType(Typ), strVer_type, tmkVar, std::string{strFrom}};
    from.add(ID);
    return from.take();
}

} // namespace tamarok
