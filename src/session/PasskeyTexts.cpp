#include "session/PasskeyTexts.h"

#include "desktop/PasskeyService.h"
#include "text/VisibleText.h"

#include <QObject>

namespace palvera {

using Kind = PasskeyPrompt::Kind;

QString textFor(const PasskeyPrompt& prompt)
{
    switch (prompt.kind) {
    case Kind::none:
        return {};
    case Kind::insert:
        return QObject::tr("Put in your security key.");
    case Kind::which:
        return QObject::tr("Touch the security key that you want to use.");
    case Kind::pin:
        return QObject::tr("Enter your security key's PIN.");
    case Kind::touch:
        return QObject::tr("Touch your security key.");
    case Kind::account:
        return QObject::tr("Which account?");
    }
    return {};
}

QString noteFor(const PasskeyPrompt& prompt)
{
    if (prompt.kind != Kind::pin)
        return {};
    if (prompt.triesLeft == 1)
        return QObject::tr("One try left. After that the security key locks.");
    if (!prompt.isWrong)
        return {};
    return prompt.triesLeft < 0 ? QObject::tr("That PIN is not right.")
                                : QObject::tr("That PIN is not right. %n tries left.", nullptr, prompt.triesLeft);
}

QStringList accountsOf(const PasskeyPrompt& prompt)
{
    QStringList shown;
    for (const auto& name : prompt.names)
        shown.append(visibleName(name, QObject::tr("Account %1").arg(shown.size() + 1)));
    return shown;
}

} // namespace palvera
