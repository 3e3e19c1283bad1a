#include "platform/foundation/LocalizedContains.h"

#include <QString>

namespace mirrolet::platform {
namespace {

/// Gives letters that can be written as one character or as two the same form.
QString composed(const std::string& text) {
    return QString::fromStdString(text).normalized(QString::NormalizationForm_C);
}

} // namespace

bool localizedCaseInsensitiveContains(const std::string& text, const std::string& part) {
    return composed(text).contains(composed(part), Qt::CaseInsensitive);
}

} // namespace mirrolet::platform
