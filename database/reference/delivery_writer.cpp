#include "delivery_writer.h"

namespace tamarok::database {

DeliveryWriter::DeliveryWriter(ado::Connection& connection, const MasterKeys& keys) :
    keys_{keys}, heads_{connection, "LISTENKOPF", {listHeadFields()}}, lines_{connection,
                                                                              "LOGS",
                                                                              {listFields(), lineFields()}},
    surcharges_{connection, "LOGS_RECH_PRICE", {surchargeFields()}},
    documents_{connection, "HEADERRECH", {documentFields()}}, articles_{connection, "NN_POSITIONEN", {articleFields()}},
    deliveryNotes_{connection, "TRANSPORTLOGISTIK", {deliveryNoteFields()}}, provisions_{connection,
                                                                                         "BEREITSTELLUNG_KOPF",
                                                                                         {provisionFields()}},
    provisionLogs_{connection, "BEREITSTELLUNG_LOGS", {provisionLogFields()}}, settlements_{connection}
{}

void DeliveryWriter::write(const Delivery& delivery)
{
    writeTransport(delivery);
    settlements_.begin(delivery);
    for (const TimberList& list : delivery.lists)
        writeList(delivery, list);
    writeDocuments(delivery);
}

RowSource DeliveryWriter::sourceOf(const Delivery& delivery, const TimberList& list) const
{
    RowSource source{keys_, delivery, &list};
    source.deliveryNote = delivery.goesByLorry ? deliveryNoteCount_ : 0;
    source.provision = delivery.isProvided ? provisionCount_ : 0;
    return source;
}

void DeliveryWriter::writeTransport(const Delivery& delivery)
{
    if (delivery.goesByLorry) ++deliveryNoteCount_;
    if (delivery.isProvided) ++provisionCount_;
    const RowSource source = sourceOf(delivery, delivery.lists.front());
    if (delivery.goesByLorry) deliveryNotes_.insert(source);
    if (delivery.isProvided) provisions_.insert(source);
}

void DeliveryWriter::writeList(const Delivery& delivery, const TimberList& list)
{
    RowSource source = sourceOf(delivery, list);
    heads_.insert(source);
    for (const LogLine& line : list.lines) {
        source.line = &line;
        lines_.insert(source);
        ++logs_; // a new database numbers the rows of LOGS from 1
        source.log = static_cast<std::int32_t>(logs_);
        settlements_.insert(delivery, line, source.log);
        if (delivery.hasSurcharges) surcharges_.insert(source);
        if (delivery.isProvided) provisionLogs_.insert(source);
    }
}

void DeliveryWriter::writeDocuments(const Delivery& delivery)
{
    RowSource source{keys_, delivery};
    for (const Document& document : delivery.documents) {
        source.document = &document;
        documents_.insert(source);
    }
    // All articles are on the invoice, which is the first document.
    for (const Article& article : delivery.articles) {
        source.document = &delivery.documents.front();
        source.article = &article;
        articles_.insert(source);
    }
}

} // namespace tamarok::database
