// Every record that is decoded from an answer or a file: the first byte chooses the record, the rest is the JSON.
// Nothing but a DecodingError may come out of a decoder, and what can be written again reads back the same.

#include "Require.h"

#include "service/AssetRecords.h"
#include "service/BinRecords.h"
#include "service/JsonReader.h"
#include "service/Organisations.h"
#include "service/SignInRecords.h"
#include "transfer/UploadProtocol.h"

#include <iterator>

namespace palvera {
namespace {

template <class Record>
void check(const Record& record)
{
    if constexpr (requires { record.toJson(); }) {
        const auto bytes = QJsonDocument(record.toJson()).toJson(QJsonDocument::Compact);
        require(Record::fromJson(json::parseObject(bytes)) == record, "a record reads back as it was written");
    }
    if constexpr (std::same_as<Record, Deliverable>) {
        record.contextLine();
        record.expectedBytes();
        require(qHash(record, 1) == qHash(Record(record), 1), "equal records hash alike");
    }
    if constexpr (std::same_as<Record, BinObject>)
        require(!record.updatedDate() || record.updatedDate()->isValid(), "a date is a date");
    if constexpr (std::same_as<Record, OrgAssetFile>)
        require(!record.deliveredDate() || record.deliveredDate()->isValid(), "a date is a date");
    if constexpr (std::same_as<Record, TransferTarget>)
        require(record.basePath(record.orgId()).startsWith("orgs/"), "an upload stands below its organisation");
}

template <class Record>
void decode(const QByteArray& bytes)
{
    try {
        check(Record::fromJson(json::parseObject(bytes)));
    } catch (const DecodingError&) {
    }
}

constexpr void (*decoders[])(const QByteArray&) = {
    decode<Orgs>,          decode<Projects>,   decode<Deliverables>, decode<Org>,         decode<Project>,
    decode<Deliverable>,   decode<BinObject>,  decode<BinPage>,      decode<BinDownload>, decode<OrgAssetFile>,
    decode<OrgAssetsPage>, decode<SignedURL>,  decode<Me>,           decode<SignedIn>,    decode<AuthConfig>,
    decode<MethodAnswer>,  decode<SignInStep>, decode<Started>,      decode<PartURLs>,    decode<Completed>,
    decode<TransferTarget>};

} // namespace
} // namespace palvera

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    if (size > 0)
        palvera::decoders[data[0] % std::size(palvera::decoders)](
            QByteArray(reinterpret_cast<const char*>(data) + 1, static_cast<qsizetype>(size) - 1));
    return 0;
}
