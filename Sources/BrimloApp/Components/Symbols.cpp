#include "BrimloApp/Components/Symbols.h"

#include "BrimloApp/Shell/Shown.h"

#include <QtCore/QDebug>
#include <QtCore/QFile>
#include <QtCore/QStringList>
#include <QtGui/QColor>
#include <QtGui/QPainter>
#include <QtQml/QQmlEngine>
#include <QtSvg/QSvgRenderer>

#include <algorithm>
#include <array>

namespace Brimlo {

namespace {

constexpr auto kEntries = std::to_array<Symbols::Entry>({
    {"arrow.clockwise",                  "rotate-cw"           },
    {"arrow.down",                       "arrow-down"          },
    {"arrow.triangle.2.circlepath",      "refresh-cw"          },
    {"arrow.up",                         "arrow-up"            },
    {"arrow.up.forward.square",          "external-link"       },
    {"arrow.uturn.backward",             "undo-2"              },
    {"arrow.uturn.backward.circle",      "circle-undo"         },
    {"brain",                            "brain"               },
    {"briefcase",                        "briefcase"           },
    {"camera",                           "camera"              },
    {"chart.pie",                        "chart-pie"           },
    {"checkmark",                        "check"               },
    {"checkmark.circle",                 "circle-check"        },
    {"checkmark.circle.fill",            "circle-check-fill"   },
    {"checkmark.shield",                 "shield-check"        },
    {"checkmark.square.fill",            "square-check-fill"   },
    {"chevron.down",                     "chevron-down"        },
    {"chevron.left",                     "chevron-left"        },
    {"chevron.right",                    "chevron-right"       },
    {"chevron.up",                       "chevron-up"          },
    {"chevron.up.chevron.down",          "chevrons-up-down"    },
    {"clock.arrow.circlepath",           "history"             },
    {"cube",                             "box"                 },
    {"doc",                              "file"                },
    {"doc.fill",                         "file-fill"           },
    {"doc.on.clipboard",                 "clipboard-copy"      },
    {"doc.on.doc",                       "copy"                },
    {"doc.text.magnifyingglass",         "file-search"         },
    {"ellipsis",                         "ellipsis"            },
    {"exclamationmark.circle",           "circle-alert"        },
    {"exclamationmark.circle.fill",      "circle-alert-fill"   },
    {"exclamationmark.triangle",         "triangle-alert"      },
    {"exclamationmark.triangle.fill",    "triangle-alert-fill" },
    {"eye",                              "eye"                 },
    {"film",                             "film"                },
    {"flask",                            "flask-conical"       },
    {"folder",                           "folder"              },
    {"folder.fill",                      "folder-fill"         },
    {"gamecontroller",                   "gamepad-2"           },
    {"gamecontroller.fill",              "joystick"            },
    {"gauge.with.dots.needle.67percent", "gauge"               },
    {"gearshape",                        "settings"            },
    {"hammer",                           "hammer"              },
    {"house",                            "house"               },
    {"info.circle",                      "info"                },
    {"internaldrive",                    "hard-drive"          },
    {"list.bullet",                      "list"                },
    {"lock",                             "lock"                },
    {"lock.shield",                      "shield-lock"         },
    {"magnifyingglass",                  "search"              },
    {"minus",                            "minus"               },
    {"minus.circle",                     "circle-minus"        },
    {"minus.square.fill",                "square-minus-fill"   },
    {"music.note",                       "music"               },
    {"pencil",                           "pencil"              },
    {"person.2",                         "users"               },
    {"plus",                             "plus"                },
    {"plus.circle",                      "circle-plus"         },
    {"progress.indicator",               "loader-circle"       },
    {"questionmark.circle",              "circle-question-mark"},
    {"ruler",                            "ruler"               },
    {"shield",                           "shield"              },
    {"shield.lefthalf.filled",           "shield-half-fill"    },
    {"shippingbox",                      "package"             },
    {"slider.horizontal.3",              "sliders-horizontal"  },
    {"sparkles",                         "sparkles"            },
    {"square",                           "square"              },
    {"square.and.arrow.down",            "download"            },
    {"square.and.arrow.up",              "share"               },
    {"square.grid.3x3.fill",             "grid-3x3-fill"       },
    {"terminal",                         "terminal"            },
    {"trash",                            "trash-2"             },
    {"xmark",                            "x"                   },
    {"xmark.bin",                        "archive-x"           },
    {"xmark.circle.fill",                "circle-x-fill"       },
});
static_assert(std::ranges::is_sorted(kEntries, {}, &Symbols::Entry::symbol));

constexpr int kDrawnSize = 24;

/// The SVG text of a symbol's drawing; empty without one.
QByteArray svgOf(const QString& symbol) {
    const auto name = Symbols::drawing(symbol.toStdString());
    if (!name) {
        return {};
    }
    const auto base = words(*name);
    QFile file(QStringLiteral(":/qt/qml/Brimlo/icons/%1.svg").arg(base));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Replaces "currentColor", which the drawings use for strokes and fills, and the stroke width.
QByteArray tinted(QByteArray svg, const QColor& color, const QString& stroke) {
    svg.replace("currentColor", color.name(QColor::HexRgb).toLatin1());
    bool isNumber = false;
    if (stroke.toDouble(&isNumber) > 0 && isNumber) {
        svg.replace("stroke-width=\"2\"", "stroke-width=\"" + stroke.toLatin1() + '"');
    }
    return svg;
}

}  // namespace

std::span<const Symbols::Entry> Symbols::entries() {
    return kEntries;
}

std::optional<std::string_view> Symbols::drawing(std::string_view symbol) {
    const auto* found = std::ranges::lower_bound(kEntries, symbol, {}, &Symbols::Entry::symbol);
    return found == kEntries.end() || found->symbol != symbol ? std::nullopt
                                                              : std::optional{found->file};
}

Symbols* Symbols::create(QQmlEngine* engine, QJSEngine* /*scripts*/) {
    engine->addImageProvider(QStringLiteral("symbol"), new SymbolImages);  // The engine owns it.
    return new Symbols;                                                    // Likewise.
}

QUrl Symbols::source(const QString& symbol, const QColor& color, double strokeWidth) {
    if (symbol.isEmpty()) {
        return {};
    }
    if (!drawing(symbol.toStdString())) {
        qWarning().noquote() << "no drawing stands for the symbol" << symbol;
        return {};
    }
    return QUrl(QStringLiteral("image://symbol/%1/%2/%3")
                    .arg(symbol, color.name(QColor::HexArgb).sliced(1))
                    .arg(strokeWidth));
}

QImage SymbolImages::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const auto wanted = requestedSize.isValid() ? requestedSize : QSize(kDrawnSize, kDrawnSize);
    if (size != nullptr) {
        *size = wanted;
    }
    QImage image(wanted, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const auto parts = id.split(QLatin1Char('/'));
    const QColor color(QLatin1Char('#') + parts.value(1));
    const auto svg = svgOf(parts.value(0));
    if (image.isNull() || svg.isEmpty() || !color.isValid()) {
        return image;
    }
    QPainter painter(&image);
    // The opacity of the painter, not of the strokes: these would be darker where they cross.
    painter.setOpacity(color.alphaF());
    QSvgRenderer(tinted(svg, color, parts.value(2))).render(&painter);
    return image;
}

}  // namespace Brimlo
