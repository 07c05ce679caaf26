#include "BrimloApp/AppModel/Sections.h"

#include "BrimloApp/AppModel/Section.h"

#include <QtCore/QString>
#include <QtCore/QVariantMap>

#include <string_view>

namespace Brimlo {
namespace {

QString text(const std::string_view words) {
    return QString::fromUtf8(words.data(), static_cast<qsizetype>(words.size()));
}

}  // namespace

QVariantList Sections::all() {
    QVariantList sections;
    for (const Section section : kAllSections) {
        sections.append(QVariantMap{
            {"id",     text(id(section))      },
            {"title",  text(rawValue(section))},
            {"symbol", text(symbol(section))  },
        });
    }
    return sections;
}

}  // namespace Brimlo
