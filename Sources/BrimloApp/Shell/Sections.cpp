#include "BrimloApp/Shell/Sections.h"

#include <QtCore/QVariantMap>

namespace Brimlo {

QVariantList Sections::all() {
    constexpr struct {
        Section id;
        const char* title;
        const char* symbol;
    } kSections[] = {
        {Section::Overview,   "Overview",       "gauge.with.dots.needle.67percent"},
        {Section::Clean,      "Smart Clean",    "sparkles"                        },
        {Section::Analyzer,   "Space Analyzer", "chart.pie"                       },
        {Section::LargeFiles, "Large Files",    "doc.text.magnifyingglass"        },
        {Section::Rules,      "Rules",          "slider.horizontal.3"             },
        {Section::Duplicates, "Duplicates",     "doc.on.doc"                      },
        {Section::History,    "History",        "clock.arrow.circlepath"          },
        {Section::Settings,   "Settings",       "gearshape"                       },
    };
    QVariantList all;
    for (const auto& section : kSections) {
        all.append(QVariantMap{
            {"id",     static_cast<int>(section.id)     },
            {"title",  QString::fromUtf8(section.title) },
            {"symbol", QString::fromUtf8(section.symbol)},
        });
    }
    return all;
}

}  // namespace Brimlo
