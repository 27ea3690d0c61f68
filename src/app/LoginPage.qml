import QtQuick
import Palvera.SignIn
import Palvera.App

/// Where nobody is signed in.
LoginView {
    required property RootModel model

    buildText: model.buildText
    login: model.login
}
