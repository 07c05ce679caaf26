#include "BrimloAppTests/Support/LayoutAudit.h"

#include <QtGui/QImage>
#include <QtQuick/QQuickItem>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

namespace Brimlo::Testing::LayoutAudit {
namespace {

/// A text, or a button without regard to its text.
struct Piece {
    const QQuickItem* item = nullptr;
    QRectF place;  ///< Of the words themselves, in the scene.
    QRectF seen;   ///< What the parts around it leave of that.
    double opacity = 1;
    int layer = 0;  ///< 0 is the window, each open popup has a higher one.

    [[nodiscard]] std::string text() const {
        const QString words = item->property("text").toString().left(40);
        return '"' + words.toStdString() + '"';
    }
    [[nodiscard]] bool isText() const { return item->inherits("QQuickText"); }
};

/// Where the words stand within the item.
QRectF words(const QQuickItem& text) {
    const double width = text.property("contentWidth").toDouble();
    const double height = text.property("contentHeight").toDouble();
    const int across = text.property("effectiveHorizontalAlignment").toInt();
    const int down = text.property("verticalAlignment").toInt();
    const double freeX = text.width() - width;
    const double freeY = text.height() - height;
    const double x = across == Qt::AlignRight ? freeX : across == Qt::AlignHCenter ? freeX / 2 : 0;
    const double y = down == Qt::AlignBottom ? freeY : down == Qt::AlignVCenter ? freeY / 2 : 0;
    return {x, y, width, height};
}

struct Looker {
    std::vector<Piece> pieces;
    int layers = 0;

    void look(const QQuickItem& item, QRectF seen, double opacity, int layer) {
        if (!item.isVisible() || item.opacity() == 0) {
            return;
        }
        opacity *= item.opacity();
        if (item.inherits("QQuickPopupItem")) {
            layer = ++layers;
        }
        if (item.clip()) {
            seen &= item.mapRectToScene(item.boundingRect());
        }
        // A message that floats over what came before it.
        if (item.property("shownText").isValid()) {
            const QRectF place = item.mapRectToScene(item.boundingRect());
            std::erase_if(
                pieces, [&](const Piece& under) { return under.place.intersects(place); });
        }
        const bool isText =
            item.inherits("QQuickText") && !item.property("text").toString().isEmpty();
        if (isText || item.inherits("QQuickAbstractButton")) {
            const QRectF place =
                item.mapRectToScene(isText ? words(item) : QRectF{{}, item.size()});
            pieces.push_back({&item, place, place & seen, opacity, layer});
        }
        for (const QQuickItem* const child : item.childItems()) {
            look(*child, seen, opacity, layer);
        }
    }
};

std::vector<Piece> piecesOf(QQuickWindow& window) {
    Looker looker;
    looker.look(*window.contentItem(), {-1e6, -1e6, 2e6, 2e6}, 1, 0);
    std::erase_if(looker.pieces, [](const Piece& piece) { return piece.seen.isEmpty(); });
    return looker.pieces;
}

bool isWithin(const QRectF& part, const QRectF& whole) {
    return whole.adjusted(-1, -1, 1, 1).contains(part);
}

/// Whether it has scrolled partly out of sight, in a direction in which the view scrolls.
bool isScrolled(const Piece& piece) {
    for (auto* up = piece.item->parentItem(); up != nullptr; up = up->parentItem()) {
        if (!up->inherits("QQuickFlickable")) {
            continue;
        }
        QRectF view = up->mapRectToScene(up->boundingRect());
        if (up->property("contentWidth").toDouble() <= up->width()) {
            view.setLeft(std::min(view.left(), piece.place.left()));
            view.setRight(std::max(view.right(), piece.place.right()));
        }
        if (!isWithin(piece.place, view)) {
            return true;
        }
    }
    return false;
}

std::optional<std::string> fault(const Piece& piece, const QRectF& window, const Elision elision) {
    const QQuickItem& item = *piece.item;
    if (!isWithin(piece.seen, window)) {
        return "reaches out of the window";
    }
    if (!piece.isText() || isScrolled(piece)) {
        return std::nullopt;
    }
    // PathText bears the whole path in a property and in a tooltip.
    const bool isPath = item.property("path").isValid();
    if (item.property("truncated").toBool() && elision == Elision::ofPaths && !isPath) {
        return "is shortened";
    }
    if (!isWithin(piece.place, item.mapRectToScene(item.boundingRect()))) {
        return "is larger than its place";
    }
    if (!isWithin(piece.place, piece.seen)) {
        return "is cut off";
    }
    return std::nullopt;
}

bool areTogether(const Piece& one, const Piece& other) {
    const QRectF both = one.seen & other.seen;
    return one.layer == other.layer && both.width() > 2 && both.height() > 4;
}

/// The colour that most of a part of the picture has: that on which the words stand.
QColor ground(const QImage& picture, const QRectF& part) {
    std::map<QRgb, int> counts;
    const QRect area = part.toAlignedRect().adjusted(-2, -2, 2, 2) & picture.rect();
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            ++counts[picture.pixel(x, y)];
        }
    }
    const auto most =
        std::ranges::max_element(counts, {}, [](const auto& it) { return it.second; });
    return most == counts.end() ? QColor{} : QColor{most->first};
}

QColor blended(const QColor& ink, const QColor& ground, const double opacity) {
    const auto mix = [&](const float a, const float b) {
        return static_cast<float>(a * opacity + b * (1 - opacity));
    };
    return QColor::fromRgbF(
        mix(ink.redF(), ground.redF()),
        mix(ink.greenF(), ground.greenF()),
        mix(ink.blueF(), ground.blueF()));
}

/// The relative luminance of WCAG 2.
double luminance(const QColor& color) {
    const auto linear = [](const double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

}  // namespace

double contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

std::vector<std::string> misplaced(QQuickWindow& window, const Elision elision) {
    std::vector<Piece> pieces = piecesOf(window);
    std::vector<std::string> faults;
    for (const Piece& piece : pieces) {
        if (const auto found = fault(piece, {{}, window.size()}, elision)) {
            faults.push_back(piece.text() + ' ' + *found);
        }
    }
    std::erase_if(pieces, [](const Piece& piece) { return !piece.isText(); });
    for (auto one = pieces.begin(); one != pieces.end(); ++one) {
        for (auto other = one + 1; other != pieces.end(); ++other) {
            if (areTogether(*one, *other)) {
                faults.push_back(one->text() + " runs into " + other->text());
            }
        }
    }
    return faults;
}

std::vector<std::string> faint(QQuickWindow& window) {
    const QImage picture = window.grabWindow();
    const std::vector<Piece> pieces = piecesOf(window);
    const int top = std::ranges::max(pieces, {}, &Piece::layer).layer;
    std::vector<std::string> faults;
    for (const Piece& piece : pieces) {
        if (!piece.isText() || piece.layer != top || !piece.item->isEnabled() ||
            !isWithin(piece.place, piece.seen)) {
            continue;
        }
        const QColor under = ground(picture, piece.seen);
        const auto ink = piece.item->property("color").value<QColor>();
        const double found = contrast(blended(ink, under, piece.opacity * ink.alphaF()), under);
        if (found < 4.5) {
            faults.push_back(piece.text() + " has " + std::to_string(found));
        }
    }
    return faults;
}

std::vector<std::string> lasting(
    QQuickWindow& window, const std::function<std::vector<std::string>()>& faults) {
    constexpr int kLongestMilliseconds = 10000;
    std::vector<std::string> found;
    static_cast<void>(QTest::qWaitFor(
        [&] {
            window.grabWindow();
            found = faults();
            return found.empty();
        },
        kLongestMilliseconds));
    return found;
}

}  // namespace Brimlo::Testing::LayoutAudit
