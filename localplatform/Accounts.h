#pragma once

#include <QString>

#include <vector>

namespace palvera::local {

/// Someone who can sign in, and how.
struct Account {
    enum class Way { password, emailCode, authenticator, enrolment, sso, migration, renewal, accessCode };

    const char* email;
    const char* name;
    Way way;
    const char* secret; ///< the password or access code
    const char* code;   ///< asked for after it; empty when nothing is
    const char* note;   ///< for the table printed at start
};

/// One account for each way of signing in.
const std::vector<Account>& sampleAccounts();
/// Null when there is none of that address, however it is written.
const Account* findAccount(const QString& email);

} // namespace palvera::local
