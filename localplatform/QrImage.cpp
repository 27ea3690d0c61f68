#include "localplatform/QrImage.h"

namespace palvera::local {

const QString qrImage = QStringLiteral(
    "data:image/png;base64,"
    "iVBORw0KGgoAAAANSUhEUgAAAN4AAADeAQAAAAB6HIMaAAABRElEQVR42u2YWQrDMAxEBT5AjuSr+0g5gEGd0SgtdPmfQkxwVT1/"
    "RKo2N/L32nHDG/rC4JoQxkmpd1eIzzwL5toRl+wKT7z+hG4fCztkWGYOdyn4/AWkHYHdHVaYEDJM6PiPGDKCSsEoI8DzS34aQS0o"
    "qqTNb7XPCeLdjywj4H5+5eMKZQQcv8v9OIhfYLhCRXFFB3Srzi5buKPdDwF2qHLYwpEqbArl9dw9YYnlaUTKkQoWWwhnw+Mqw+wb"
    "RweOJ5TLX9NZnR2ucJTvqzOX+qw2YguZcOrJzEKNaekKkzMO165KfPVnXyi1qlrvrpD3CaZdlE1TfW+4wl5tUN+EbKHGyWp3HdrO"
    "UKO6Jt+re4Qv7GsQewhHHvJlDkd3vCk70ht2f0Zc827xZooTVP4pll+Tmil8pmBoOrvubZ7w/uvyhv8GH6ts198a1Vr1AAAAAElF"
    "TkSuQmCC");

} // namespace palvera::local
