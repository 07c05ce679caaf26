import QtQuick

// A risk in its colour, explained by its tooltip.
Chip {
    property var risk: ""

    text: RiskWords.text(risk)
    symbol: RiskWords.symbol(risk)
    color: RiskWords.fill(risk)
    ink: RiskWords.ink(risk)
    help: RiskWords.explanation(risk)
    visible: text !== ""
}
