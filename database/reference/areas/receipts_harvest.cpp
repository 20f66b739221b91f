#include <algorithm>
#include <array>
#include <string>

#include "areas/receipts_harvest_records.h"
#include "areas/receipts_sales.h"
#include "areas/receipts_writers.h"
#include "line_measurement.h"
#include "master_keys.h"
#include "record_names.h"

#include "tamarok/convert.h"

namespace tamarok::database {
namespace {

using convert::roundHalfEven;

/// Kind of felling with the measure that it carries out and its volume by hectare.
struct Felling {
    std::string_view title, measure;
    double volumePerHectare;
    bool isCalamity;
    std::uint32_t weight;
};

constexpr std::array fellings{
    Felling{"Durchforstung", "DF", 55.0, false, 45},
    Felling{"Endnutzung", "EN", 240.0, false, 30},
    Felling{"Käferholz", "KA", 35.0, true, 15},
    Felling{"Windwurf", "KA", 60.0, true, 10},
};

struct Grade {
    std::string_view code;
    std::uint32_t weight;
};

constexpr std::array logGrades{Grade{"B", 60}, Grade{"C", 24}, Grade{"D", 7}, Grade{"A", 5}, Grade{"CX", 4}};

constexpr std::array<std::string_view, 6> surveyors{"Steiner Josef", "Gruber Martin",   "Pichler Anna",
                                                    "Auer Thomas",   "Hofer Christian", "Moser Katharina"};
constexpr std::array<std::string_view, 4> cancelReasons{"doppelt erfasst", "falscher Waldort", "falscher Waldbesitzer",
                                                        "Aufmaß fehlerhaft"};
constexpr std::array<std::string_view, 4> remarks{"Zufahrt nur bei Frost", "Abfuhr über Forststraße Grünau",
                                                  "Polter an der Kehre", "mit Waldbesitzer abgestimmt"};

/// By SaleStage: BB_T_HAB_STATUS.SHORT and BB_T_HOLZVERKAUFSSTATUS.SHORT.
struct StageStates {
    std::string_view record, line;
};
constexpr std::array stageStates{StageStates{"AN", "OF"}, StageStates{"FG", "OF"}, StageStates{"AG", "AG"},
                                 StageStates{"VK", "FA"}, StageStates{"AB", "BZ"}};

/// Writes the harvest records one after the other.
class HarvestWriter {
public:
    HarvestWriter(ado::Connection& connection, const ReceiptKeys& keys, const ReferenceOptions& options) :
        keys_{keys}, options_{options}, random_{options.seed, receiptStreams + 1}, records_{connection, "BB_HAB_KOPF",
                                                                                            harvestRecordFields},
        lines_{connection, "BB_HAB", harvestLineFields}, natureRecords_{connection, "BB_HAB_NATURALVOLLZUG",
                                                                        harvestNatureFields},
        reports_{connection}, sales_{connection, keys, options, random_}
    {}

    void write(std::int32_t index);

private:
    HarvestRecord drawRecord(std::int32_t index, const ForestPlace& place);
    void setFelling(HarvestRecord& record, const ForestPlace& place);
    void setDates(HarvestRecord& record);
    HarvestLine drawLine(const HarvestRecord& record);
    const TimberProduct& drawProduct();
    void measure(HarvestLine& line);
    void classify(HarvestLine& line);
    void setStock(HarvestLine& line, const HarvestRecord& record);
    void writeLine(HarvestLine& line);
    void writeNature(const HarvestRecord& record, const ForestPlace& place, std::int32_t id);
    void writeNature(const HarvestRecord& record, const ForestPlace& place, std::int32_t id, double volume);

    const ReceiptKeys& keys_;
    const ReferenceOptions& options_;
    const MasterKeys masterKeys_;
    Random random_;
    RecordInsert<HarvestRecord> records_;
    RecordInsert<HarvestLine> lines_;
    RecordInsert<HarvestNature> natureRecords_;
    InventoryReports reports_;
    TimberSales sales_;
    std::int32_t lineCount_ = 0;
    const Felling* felling_ = nullptr; ///< of the current record, as are the next four
    const TimberProduct* product_ = nullptr;
    std::string_view event_;
    bool isTransfer_ = false;
    std::string lot_;
};

/// Draws the head, the terms of sale and the lines, whose sums stand in the head, then inserts head, lines with their
/// offers and sales, and nature records.
void HarvestWriter::write(std::int32_t index)
{
    const ForestPlace& place = keys_.place(random_);
    felling_ = &random_.pickWeighted(fellings);
    product_ = &random_.pickWeighted(timberProducts);
    isTransfer_ = random_.chance(80);
    HarvestRecord record = drawRecord(index, place);
    sales_.begin(record.date, record.isReleased && record.cancelled == Date{}, record.owner, *product_);
    record.state = keys_.id("BB_T_HAB_STATUS", stageStates[static_cast<std::size_t>(sales_.stage())].record);
    std::array<HarvestLine, 6> lines;
    const auto count = static_cast<std::size_t>(random_.between(1, 6));
    double volume = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        HarvestLine& line = lines[i] = drawLine(record);
        line.record = index + 1;
        line.number = static_cast<std::int32_t>(i) + 1;
        line.pile = "P" + std::to_string(index + 1) + "-" + std::to_string(i + 1);
        volume += *line.volume;
        record.pieces += line.pieces;
    }
    record.volume = roundHalfEven(volume, 3);
    records_.insert(record);
    for (std::size_t i = 0; i < count; ++i)
        writeLine(lines[i]);
    writeNature(record, place, index + 1);
}

HarvestRecord HarvestWriter::drawRecord(std::int32_t index, const ForestPlace& place)
{
    HarvestRecord record;
    record.date = dateOfHead(index, options_.records, options_.baseDate, random_);
    record.number = recordName("H", record.date, index + 1);
    record.level = place.level;
    record.place = place.id;
    record.owner = keys_.owner(place.level, random_);
    record.costCentre = keys_.costCentre(place.level, random_);
    const std::int32_t order = random_.between(1, options_.records);
    if (random_.chance(950)) record.order = order;
    record.project = keys_.pick("BB_T_PROJEKT_PLANUNG", random_);
    record.object = keys_.id("BB_T_OBJEKTE", random_.chance(600) ? "1001" : "1002");
    record.yard = keys_.pick("HOLZPLATZ", random_);
    record.destination = keys_.id("BB_T_VERKAUFSZIEL", product_->destination);
    record.surveyor = random_.pick(surveyors);
    if (random_.chance(300)) record.remark = random_.pick(remarks);
    record.easting = roundHalfEven(431000.0 + 187.5 * place.id + random_.tenths(0, 1500), 1);
    record.northing = roundHalfEven(5271000.0 + 96.5 * place.id + random_.tenths(0, 1500), 1);
    lot_ = random_.chance(850) ? "L-" + std::to_string(index + 1) : std::string{};
    setFelling(record, place);
    setDates(record);
    return record;
}

void HarvestWriter::setFelling(HarvestRecord& record, const ForestPlace& place)
{
    constexpr std::array<std::string_view, 4> methods{"MS", "HV", "SK", "PF"};
    constexpr std::array<std::string_view, 4> events{"SB", "EA", "LA", "WW"};
    const std::string_view method = random_.pick(methods);
    event_ = {};
    if (felling_->isCalamity) event_ = felling_->title == "Käferholz" ? "BK" : random_.pick(events);
    record.title = std::string{felling_->title} + " " + place.name;
    record.listKind = isTransfer_ ? 4 : (random_.chance(850) ? 1 : 2);
    record.method = keys_.id("BB_T_LEI_ARBEITSVERFAHEREN", method);
    record.mark = keys_.id("BB_T_KZ_LEISTUNG", random_.chance(750) ? "HE" : "RU");
    const std::string_view logMeasuring = method == "HV" ? "HV" : "KL";
    record.measuring = keys_.id("BB_T_MESSVERFAHREN", product_->isLog() ? logMeasuring : "SP");
}

/// Felling, measurement, the date of the record and its release follow each other.
void HarvestWriter::setDates(HarvestRecord& record)
{
    record.measured = Date{record.date.days - random_.between(0, 2)};
    record.felledUntil = Date{record.measured.days - random_.between(0, 9)};
    record.felledFrom = Date{record.felledUntil.days - random_.between(2, 25)};
    record.year = toCivil(record.felledUntil).year;
    const std::int32_t daysToRelease = random_.between(0, 2);
    const std::int32_t daysToCancelling = random_.between(1, 30);
    if (random_.chance(950)) record.released = laterDay(record.date, daysToRelease, options_.baseDate);
    record.isReleased = record.released != Date{};
    if (random_.chance(30)) record.cancelled = laterDay(record.date, daysToCancelling, options_.baseDate);
    if (record.cancelled != Date{}) record.cancelReason = random_.pick(cancelReasons);
}

HarvestLine HarvestWriter::drawLine(const HarvestRecord& record)
{
    HarvestLine line;
    line.product = &drawProduct();
    line.species = keys_.id("HOLZART", line.product->species);
    line.assortment = keys_.id("HOLZSORTE", line.product->assortment);
    line.unit = keys_.id("WARENEINHEIT", line.product->unit);
    line.destination = keys_.id("BB_T_VERKAUFSZIEL", line.product->destination);
    line.bidSpecies = keys_.id("BB_TSM_BAGMV1", line.product->bidSpecies);
    line.bidAssortment = keys_.id("BB_TSM_SOGMV", line.product->bidAssortment);
    line.event = keys_.id("BB_T_ZUFALLIGES_EREIGNIS", event_);
    if (random_.chance(900)) line.colour = keys_.pick("FARBE", random_);
    if (random_.chance(120)) line.remark = random_.pick(remarks);
    line.lot = lot_;
    measure(line);
    classify(line);
    setStock(line, record);
    return line;
}

/// Most lines are of the record's product, the others of one of the same group of species.
const TimberProduct& HarvestWriter::drawProduct()
{
    const TimberProduct& other = random_.pickWeighted(timberProducts);
    const bool isMain = random_.chance(650) || other.bidSpecies != product_->bidSpecies;
    return isMain ? *product_ : other;
}

/// Logs of one diameter and length together, or a quantity of stacked timber, chips or poles.
void HarvestWriter::measure(HarvestLine& line)
{
    const TimberProduct& product = *line.product;
    const double drawn = random_.between(product.low, product.high);
    const std::int32_t logs = random_.chance(200) || product.bidAssortment == "WH" ? 1 : random_.between(4, 70);
    const std::int32_t number = random_.between(1, 999);
    if (!product.isLog()) {
        line.quantity = roundHalfEven(drawn, product.decimals);
        line.volume = roundHalfEven(*line.quantity * product.volumePerUnit, 3);
        if (product.unit == "Stk") line.pieces = static_cast<std::int32_t>(*line.quantity);
        return;
    }
    line.diameter = static_cast<std::int32_t>(drawn);
    line.length = product.length;
    line.pieces = logs;
    if (logs == 1) line.log = number;
    line.volume = roundHalfEven(logs * logVolume(line.diameter, product.length, 0.0, BarkUnit::None), 3);
    line.quantity = line.volume;
}

/// Quality by the product, strength class by the diameter; damage mostly in calamity fellings.
void HarvestWriter::classify(HarvestLine& line)
{
    const Grade& grade = random_.pickWeighted(logGrades);
    const bool isVeneer = line.product->assortment == "FU";
    const bool isDamaged = random_.chance(felling_->isCalamity ? 500 : 80);
    const std::int32_t damage = keys_.pick("BB_T_HOLZSCHADEN", random_);
    if (isDamaged) line.damage = event_ == "BK" ? keys_.id("BB_T_HOLZSCHADEN", "KF") : damage;
    line.quality = keys_.id("GUETEKLASSE", isVeneer ? "F" : (line.product->isLog() ? grade.code : "N"));
    if (!line.product->isLog()) return;
    const std::size_t strength = masterKeys_.strengthClass(line.diameter);
    line.strength = keys_.id("STKL", masterKeys_.strengthClasses()[strength].code);
    const std::int32_t group = std::clamp(line.diameter / 10 - 1, 1, 5); // under 30 cm, then a class of 10 cm each
    line.bidStrength = keys_.id("BB_TSM_STKLGMV", std::to_string(group));
}

/// Timber leaves the stock by its sale, a few lines for the enterprise's own use, those of a transfer by the transfer.
void HarvestWriter::setStock(HarvestLine& line, const HarvestRecord& record)
{
    line.receipt = keys_.id("BB_T_ZUGANGSART", isTransfer_ ? "UM" : "EI");
    line.receivedOn = record.date;
    const auto stage = static_cast<std::size_t>(sales_.stage());
    line.saleState = keys_.id("BB_T_HOLZVERKAUFSSTATUS", stageStates[stage].line);
    const bool isPartial = random_.chance(120);
    const double part = random_.between(50, 90) / 100.0;
    const std::int32_t daysToHaulage = random_.between(1, 25);
    line.isBlocked = random_.chance(40);
    if (sales_.stage() < SaleStage::sold) return;
    line.issue = keys_.id("BB_T_ABGANGSART", isTransfer_ ? "UM" : "VK");
    line.issuedOn = sales_.saleDate();
    line.issued = isPartial ? roundHalfEven(*line.quantity * part, line.product->decimals) : *line.quantity;
    line.hauledOn = laterDay(line.issuedOn, daysToHaulage, options_.baseDate);
}

void HarvestWriter::writeLine(HarvestLine& line)
{
    const std::int32_t id = ++lineCount_; // the database numbers the rows of an empty table from 1
    line.offer = sales_.writeOffer(id, *line.quantity, *line.product);
    if (line.issued) line.sale = sales_.writeSale(id, *line.issued, *line.product);
    lines_.insert(line);
}

/// Divides the volume of a record among one or two nature records.
void HarvestWriter::writeNature(const HarvestRecord& record, const ForestPlace& place, std::int32_t id)
{
    const bool isDivided = random_.chance(250);
    const double part = random_.between(30, 70) / 100.0;
    const ForestPlace& other = keys_.placeOfLevel(place.level, random_);
    const double first = isDivided ? roundHalfEven(*record.volume * part, 3) : *record.volume;
    writeNature(record, place, id, first);
    if (isDivided) writeNature(record, other, id, roundHalfEven(*record.volume - first, 3));
}

void HarvestWriter::writeNature(const HarvestRecord& record, const ForestPlace& place, std::int32_t id, double volume)
{
    HarvestNature nature;
    nature.record = id;
    nature.date = record.felledUntil;
    nature.volume = volume;
    nature.area = std::max(0.01, roundHalfEven(volume / felling_->volumePerHectare, 2));
    nature.place = place.id;
    nature.measure = keys_.id("BB_T_VOLLZUGSMASSNAHME", felling_->measure);
    if (random_.chance(200)) nature.remark = random_.pick(remarks);
    InventoryReport report;
    report.quantity = nature.volume;
    report.area = nature.area;
    report.date = record.date;
    report.stand = place.stand;
    report.transferred = laterDay(record.date, random_.between(5, 40), options_.baseDate);
    if (random_.chance(850)) nature.report = reports_.write(report);
    natureRecords_.insert(nature);
}

} // namespace

void writeHarvestRecords(ado::Connection& connection, const ReceiptKeys& keys, const ReferenceOptions& options)
{
    HarvestWriter writer{connection, keys, options};
    for (std::int32_t index = 0; index < options.records; ++index)
        writer.write(index);
}

} // namespace tamarok::database
