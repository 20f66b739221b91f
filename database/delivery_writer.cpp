#include "database/delivery_writer.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "database/delivery_fields.h"

namespace tamarok::database {
namespace {

using ado::DataType;
using Columns = std::vector<BulkInsert::Column>;

constexpr std::size_t usualVersions = 3; // R, A1 and A2 cover most deliveries

struct SettlementColumn {
    std::string_view name;
    DataType type;
};
constexpr std::array<SettlementColumn, 8> settlementColumns{{
    {"PREIS", DataType::Double},
    {"MENGE", DataType::Double},
    {"NAME", DataType::VarWChar},
    {"KUNDE", DataType::Integer},
    {"EURO", DataType::SmallInt},
    {"MSZ", DataType::Double},
    {"VERTRAG", DataType::VarWChar},
    {"ID_WARENEINHEIT", DataType::Integer},
}};

/// First column of a version's settlement in LOGS_RECH, ID_LOG being column 0.
constexpr std::size_t settlementColumn(std::size_t version)
{
    return 1 + version * settlementColumns.size();
}

/// INSERT into LOGS_RECH with the columns of the first `versions` settlements.
BulkInsert settlementInsert(ado::Connection& connection, std::size_t versions)
{
    std::vector<std::string> names;
    for (std::size_t version = 0; version < versions; ++version)
        for (const SettlementColumn& column : settlementColumns)
            names.push_back(std::string{profile::versions[version]} + "_" + std::string{column.name});
    Columns columns{{"ID_LOG", DataType::Integer}};
    for (std::size_t i = 0; i < names.size(); ++i)
        columns.push_back({names[i], settlementColumns[i % settlementColumns.size()].type});
    return BulkInsert{connection, "LOGS_RECH", columns};
}

BulkInsert insertOf(ado::Connection& connection, std::string_view table, const Columns& columns)
{
    return BulkInsert{connection, table, columns};
}

} // namespace

DeliveryWriter::DeliveryWriter(ado::Connection& connection, const MasterKeys& keys) :
    keys_{keys}, heads_{insertOf(connection, "LISTENKOPF", columnsOf({listHeadFields()}))},
    lines_{insertOf(connection, "LOGS", columnsOf({listFields(), lineFields()}))},
    unsettled_{settlementInsert(connection, 0)}, usual_{settlementInsert(connection, usualVersions)},
    full_{settlementInsert(connection, versionCount)}, surcharges_{insertOf(connection, "LOGS_RECH_PRICE",
                                                                            {{"ID_LOG", DataType::Integer},
                                                                             {"R_PREIS_1", DataType::Double},
                                                                             {"R_PREIS_2", DataType::Double},
                                                                             {"A1_PREIS_1", DataType::Double}})},
    documents_{insertOf(connection, "HEADERRECH", columnsOf({documentFields()}))},
    articles_{insertOf(connection, "NN_POSITIONEN",
                       {{"NN_NAME"},
                        {"VER_TYPE"},
                        {"NUMMER"},
                        {"BEZEICHNUNG"},
                        {"MENGE", DataType::Double},
                        {"EINHPREIS", DataType::Double},
                        {"RABATT", DataType::Double},
                        {"MWST", DataType::Double},
                        {"WILDURS"},
                        {"ID_PERSONAL", DataType::Integer},
                        {"DATUM", DataType::Date}})},
    deliveryNotes_{insertOf(connection, "TRANSPORTLOGISTIK",
                            {{"ID", DataType::Integer},
                             {"ID_TRANSPORTLOGISTIK_WAGGON", DataType::Integer},
                             {"EINGANGS_DATUM", DataType::Date},
                             {"PID", DataType::Integer},
                             {"POLTER"},
                             {"LKW_NR"},
                             {"BAHNHOF"},
                             {"LIEFERSCHEIN_NR"},
                             {"STUCK", DataType::Integer}})},
    provisions_{insertOf(connection, "BEREITSTELLUNG_KOPF",
                         {{"ID", DataType::Integer},
                          {"BEREITSTELLUNGSNAME"},
                          {"ERSTELLUNGSDATUM", DataType::Date},
                          {"ID_PERSONAL", DataType::Integer},
                          {"ID_ACCESS_LEVELS", DataType::Integer}})},
    provided_{insertOf(connection, "BEREITSTELLUNG_LOGS",
                       {{"ID_LOGS", DataType::Integer}, {"ID_BEREITSTELLUNG_KOPF", DataType::Integer}})}
{}

void DeliveryWriter::write(const Delivery& delivery)
{
    writeTransport(delivery);
    for (const TimberList& list : delivery.lists)
        writeList(delivery, list);
    writeDocuments(delivery);
    writeArticles(delivery);
}

BulkInsert& DeliveryWriter::settlementsFor(const Delivery& delivery)
{
    if (delivery.documents.empty()) return unsettled_;
    BulkInsert& row = delivery.documents.back().version < usualVersions ? usual_ : full_;
    row.clear();
    for (const Document& document : delivery.documents) {
        const std::size_t first = settlementColumn(document.version);
        row[first + 2] = document.name;
        row[first + 3] = document.partner;
        row[first + 4] = static_cast<std::int16_t>(document.euro ? 1 : 0);
        row[first + 5] = orNull(document.guideFigure);
        row[first + 6] = textOrNull(document.contract);
        row[first + 7] = document.unit;
    }
    return row;
}

void DeliveryWriter::writeTransport(const Delivery& delivery)
{
    const TimberList& list = delivery.lists.front();
    if (delivery.lorry) {
        ++deliveryNoteCount_;
        deliveryNotes_[0] = deliveryNoteCount_;
        deliveryNotes_[1] = delivery.railway ? Variant{1 + deliveryNoteCount_ % keys_.count("TRANSPORTLOGISTIK_WAGGON")}
                                             : Variant{Null{}};
        deliveryNotes_[2] = Date{delivery.lists.back().date.days + 2.0};
        deliveryNotes_[3] = deliveryNoteCount_ * 10;
        deliveryNotes_[4] = "Polter " + std::to_string(list.pile);
        deliveryNotes_[5] = "LKW " + std::to_string(100 + deliveryNoteCount_ % 37);
        deliveryNotes_[6] = textOrNull(delivery.railway ? "Verladebahnhof Ost" : "");
        deliveryNotes_[7] = "LS-" + std::to_string(deliveryNoteCount_);
        deliveryNotes_[8] = static_cast<std::int32_t>(list.lines.size());
        deliveryNotes_.insert();
    }
    if (delivery.provided) {
        ++provisionCount_;
        provisions_[0] = provisionCount_;
        provisions_[1] = "B-" + std::to_string(provisionCount_);
        provisions_[2] = Date{delivery.lists.back().date.days + 1.375}; // made out at nine in the morning
        provisions_[3] = list.owner;
        provisions_[4] = list.level;
        provisions_.insert();
    }
}

void DeliveryWriter::writeListHead(const Delivery& delivery, const TimberList& list)
{
    setFields(heads_, 0, listHeadFields(), RowSource{keys_, delivery, &list});
    heads_.insert();
}

void DeliveryWriter::writeList(const Delivery& delivery, const TimberList& list)
{
    writeListHead(delivery, list);
    RowSource source{keys_, delivery, &list};
    source.deliveryNote = delivery.lorry ? deliveryNoteCount_ : 0;
    setFields(lines_, 0, listFields(), source);
    BulkInsert& settlements = settlementsFor(delivery);
    for (const LogLine& line : list.lines) {
        source.line = &line;
        setFields(lines_, listFields().size(), lineFields(), source);
        lines_.insert();
        ++logs_; // the new database numbers the rows of LOGS from 1
        writeLine(delivery, line, settlements);
    }
}

void DeliveryWriter::writeLine(const Delivery& delivery, const LogLine& line, BulkInsert& settlements)
{
    const auto id = static_cast<std::int32_t>(logs_);
    settlements[0] = id;
    for (const Document& document : delivery.documents) {
        settlements[settlementColumn(document.version)] = line.price[document.version];
        settlements[settlementColumn(document.version) + 1] = line.amount[document.version];
    }
    settlements.insert();
    if (delivery.surcharges) {
        surcharges_[0] = id;
        surcharges_[1] = 0.5;
        surcharges_[2] = line.bark > 0.0 ? Variant{0.25} : Variant{Null{}};
        surcharges_[3] = line.number % 2 == 0 ? Variant{0.1} : Variant{Null{}};
        surcharges_.insert();
    }
    if (delivery.provided) {
        provided_[0] = id;
        provided_[1] = provisionCount_;
        provided_.insert();
    }
}

void DeliveryWriter::writeDocuments(const Delivery& delivery)
{
    for (const Document& document : delivery.documents) {
        RowSource source{keys_, delivery};
        source.document = &document;
        setFields(documents_, 0, documentFields(), source);
        documents_.insert();
    }
}

void DeliveryWriter::writeArticles(const Delivery& delivery)
{
    for (const Article& article : delivery.articles) {
        const Document& invoice = delivery.documents.front();
        articles_[0] = invoice.name;
        articles_[1] = profile::versions[invoice.version];
        articles_[2] = article.number;
        articles_[3] = article.text;
        articles_[4] = article.quantity;
        articles_[5] = article.price;
        articles_[6] = article.discount;
        articles_[7] = article.tax;
        articles_[8] = textOrNull(article.origin);
        articles_[9] = invoice.partner;
        articles_[10] = invoice.date;
        articles_.insert();
    }
}

} // namespace tamarok::database
