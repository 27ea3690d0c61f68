#pragma once

#include <QObject>

#include <QtQml/qqmlregistration.h>

namespace palvera {

class Preferences;

/// How large texts are: as the desktop has them, and how many steps larger or smaller the user wants them, which is
/// kept between runs. Main thread.
class TextSize : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(TextSizeModel)
    QML_UNCREATABLE("the program makes it")
    Q_PROPERTY(double scale READ scale NOTIFY changed)

public:
    explicit TextSize(Preferences& preferences, QObject* parent = nullptr);

    /// Times the size that texts have as designed.
    double scale() const;
    /// The desktop's own size, as such a scale.
    void setDesktopScale(double scale);
    Q_INVOKABLE void grow() { step(1); }
    Q_INVOKABLE void shrink() { step(-1); }
    /// Back to the desktop's size.
    Q_INVOKABLE void reset();

Q_SIGNALS:
    void changed();

private:
    void step(int by);

    Preferences& m_preferences;
    int m_percent; // of the desktop's size
    double m_desktopScale = 1;
};

} // namespace palvera
