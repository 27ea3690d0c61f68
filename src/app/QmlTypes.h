#pragma once

#include "session/LoginView.h"

#include <QtQml/qqml.h>

namespace palvera {

/// Lets screens name a type that knows nothing of screens.
struct LoginModel {
    Q_GADGET
    QML_FOREIGN(palvera::LoginView)
    QML_NAMED_ELEMENT(LoginModel)
    QML_UNCREATABLE("the program makes it")
};

} // namespace palvera
