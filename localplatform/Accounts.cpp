#include "localplatform/Accounts.h"

namespace palvera::local {

namespace {

using Way = Account::Way;

const std::vector<Account> accounts{
    {"ada@northlight.example", "Ada Lindqvist", Way::password, "reel-one", "", "password"},
    {"ben@northlight.example", "Ben Okafor", Way::emailCode, "reel-two", "246810", "password, then the e-mailed code"},
    {"cleo@northlight.example", "Cleo Marchetti", Way::authenticator, "reel-three", "135790",
     "password, then the authenticator's code"},
    {"dov@northlight.example", "Dov Hallgrim", Way::enrolment, "reel-four", "135790",
     "password, then an authenticator is added"},
    {"eve@harbour.example", "Eve Castellan", Way::sso, "", "", "single sign-on in the browser"},
    {"finn@harbour.example", "Finn Aldous", Way::migration, "reel-six", "", "password of the old platform"},
    {"gus@harbour.example", "Gus Verhoeven", Way::renewal, "reel-seven", "", "always told that it needs renewing"},
    {"hana@kestrel.example", "Hana Brandt", Way::accessCode, "open-sesame", "", "access code"},
};

} // namespace

const std::vector<Account>& sampleAccounts()
{
    return accounts;
}

const Account* findAccount(const QString& email)
{
    for (const auto& account : accounts)
        if (email.compare(QLatin1String(account.email), Qt::CaseInsensitive) == 0)
            return &account;
    return nullptr;
}

} // namespace palvera::local
