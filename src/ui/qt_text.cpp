// The boundary where single-byte text of the engines becomes Qt text and back, in the code
// page of the current language.
#include "ui/qt_text.h"

#include "core/codepage.h"

namespace orvak::ui {

QString toQString(std::string_view bytes, std::string_view language) {
    const std::string utf8 = core::toUtf8(bytes, core::codePageForLanguage(language));
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

std::string fromQString(const QString& text, std::string_view language) {
    const QByteArray utf8 = text.toUtf8();
    return core::fromUtf8(std::string_view(utf8.constData(), static_cast<size_t>(utf8.size())),
                          core::codePageForLanguage(language));
}

std::optional<std::string> fromQStringExact(const QString& text, std::string_view language) {
    const QByteArray utf8 = text.toUtf8();
    return core::fromUtf8Exact(std::string_view(utf8.constData(), static_cast<size_t>(utf8.size())),
                               core::codePageForLanguage(language));
}

QString plainDecimal(float v) {
    for (int decimals = 0; decimals < 12; ++decimals) {
        const QString text = QString::number(static_cast<double>(v), 'f', decimals);
        if (text.toFloat() == v) {
            return text;
        }
    }
    return QString::number(static_cast<double>(v), 'g', 9);
}

} // namespace orvak::ui
