#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "areas/receipts_keys.h"
#include "areas/receipts_timber.h"
#include "random.h"
#include "record_insert.h"
#include "tamarok_database/reference_options.h"

namespace tamarok::database {

/// A surcharge or, if negative, a deduction.
struct Surcharge {
    std::int32_t key = 0; ///< BB_T_ZU_U_ABSCHLAGE_Z_ROH.ID, 0 for none
    double share = 0.0;   ///< of the price
};

/// A sale or an offer of one line of a harvest record: a row of BB_HAB_FAKTURA.
struct TimberSale {
    std::int32_t line = 0, document = 0;
    bool isOffer = false;
    Date date, validUntil;
    std::optional<double> quantity, price, surcharge1, surcharge2, surcharge3, net, taxRate, tax, gross, discount;
    std::int32_t daysToPay = 0;
    std::int32_t customer = 0, supplier = 0, contract = 0, payment = 0, use = 0, procedure = 0, kind = 0, place = 0;
    std::int32_t bark = 0, extraction = 0, priceGroup = 0, taxKey = 0, budget = 0;
    std::int32_t surchargeKey1 = 0, surchargeKey2 = 0, surchargeKey3 = 0;
};

/// How far the sale of a harvest record has come.
enum class SaleStage : std::uint8_t { entered, released, offered, sold, paid };

/// Draws the terms on which the lines of one harvest record are sold, and writes sales and offers.
class TimberSales {
public:
    /// @param keys, options, random  must outlive the object
    TimberSales(ado::Connection& connection, const ReceiptKeys& keys, const ReferenceOptions& options, Random& random);

    /// Draws the terms of a record. @param owner  sells the timber
    void begin(Date recordDate, bool isReleased, std::int32_t owner, const TimberProduct& product);

    SaleStage stage() const noexcept { return stage_; }
    Date saleDate() const noexcept { return saleDate_; }

    /// Inserts the offer or the sale of a line and returns its ID; 0, and nothing inserted, if the record's sale has
    /// not come as far. Errors: provider failures.
    /// @param line  BB_HAB.ID
    std::int32_t writeOffer(std::int32_t line, double quantity, const TimberProduct& product);
    std::int32_t writeSale(std::int32_t line, double quantity, const TimberProduct& product);

private:
    void drawStage(Date recordDate, bool isReleased);
    void drawTerms(std::int32_t owner, const TimberProduct& product);
    void drawSurcharges();
    TimberSale lineTerms(std::int32_t line, double quantity, const TimberProduct& product) const;
    std::int32_t insert(TimberSale& sale, double price);
    double priceOf(const TimberProduct& product) const;

    const ReceiptKeys& keys_;
    const ReferenceOptions& options_;
    Random& random_;
    RecordInsert<TimberSale> insert_;
    std::int32_t count_ = 0;
    SaleStage stage_ = SaleStage::entered;
    Date offerDate_, offerValidUntil_, saleDate_;
    std::int32_t offerDocument_ = 0, saleDocument_ = 0;
    TimberSale terms_; ///< what the lines of the record share
    std::array<Surcharge, 3> surcharges_;
    double pricePosition_ = 0.0; ///< between the lowest and the highest price of a product, 0 to 1
};

} // namespace tamarok::database
