// Every record that is decoded from an answer or a file: the first byte chooses the record, the rest is the JSON.
// What can be written again reads back the same.

#include "Require.h"

#include "service/AssetRecords.h"
#include "service/BinRecords.h"
#include "service/Organisations.h"
#include "service/SignInRecords.h"
#include "transfer/UploadProtocol.h"

namespace palvera {
namespace {

template <class Record>
void decode(const QByteArray& text)
{
    const auto record = Record::fromJson(json::parseObject(text));
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

constexpr void (*decoders[])(const QByteArray&) = {
    decode<Orgs>,          decode<Projects>,   decode<Deliverables>, decode<Org>,         decode<Project>,
    decode<Deliverable>,   decode<BinObject>,  decode<BinPage>,      decode<BinDownload>, decode<OrgAssetFile>,
    decode<OrgAssetsPage>, decode<SignedURL>,  decode<Me>,           decode<SignedIn>,    decode<AuthConfig>,
    decode<MethodAnswer>,  decode<SignInStep>, decode<Started>,      decode<PartURLs>,    decode<Completed>,
    decode<TransferTarget>};

} // namespace

void check(const QByteArray& input)
{
    decoders[static_cast<unsigned char>(input[0]) % std::size(decoders)](input.sliced(1));
}

} // namespace palvera
