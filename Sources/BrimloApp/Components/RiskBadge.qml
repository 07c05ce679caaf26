import QtQuick
import Brimlo

// A rating in its colour, explained in a tooltip.
Chip {
    property string risk

    text: Format.risk(risk)
    symbol: RiskWords.symbol(risk)
    color: RiskWords.fill(risk)
    ink: RiskWords.ink(risk)
    help: RiskWords.explanation(risk)
    visible: text !== ""
}
