pragma Singleton

import QtQuick

// How the screens show a rating, given by its word: "safe", "rebuild" or "review".
QtObject {
    readonly property var all: ["safe", "rebuild", "review"]

    function pick(risk, safe, rebuild, review, none) {
        switch (risk) {
        case "safe":
            return safe;
        case "rebuild":
            return rebuild;
        case "review":
            return review;
        default:
            return none;
        }
    }

    function symbol(risk): string {
        return pick(risk, "checkmark.circle.fill", "arrow.triangle.2.circlepath", "exclamationmark.triangle.fill", "");
    }

    function explanation(risk): string {
        return pick(risk, qsTr("Regenerated automatically; at worst the next launch is slightly slower."), qsTr("Regenerable, but costs time or bandwidth (re-download, full rebuild)."), qsTr("May contain data you created or cannot easily recreate. Decide manually."), "");
    }

    // The line beside the name of a suggestion.
    function line(risk): string {
        return pick(risk, qsTr("Comes back on its own"), qsTr("Comes back after a rebuild or re-download"), qsTr("May contain your own files"), "");
    }

    function outcome(risk): string {
        return pick(risk, qsTr("Goes to Trash. It can be regenerated."), qsTr("Goes to Trash. It can be regenerated."), qsTr("Goes to Trash, where you can put it back."), "");
    }

    function fill(risk): color {
        return pick(risk, Theme.safe, Theme.rebuild, Theme.review, Theme.secondaryText);
    }

    function ink(risk): color {
        return pick(risk, Theme.safeText, Theme.rebuildText, Theme.reviewText, Theme.secondaryText);
    }
}
