pragma Singleton

import QtQuick

// What the screens say of a risk, given as "safe", "rebuild" or "review", or as 0, 1 or 2.
QtObject {
    readonly property var all: ["safe", "rebuild", "review"]

    function name(risk): string {
        return typeof risk === "number" ? (all[risk] ?? "") : String(risk ?? "");
    }

    function pick(risk, safe, rebuild, review, none) {
        switch (name(risk)) {
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

    function text(risk): string {
        return pick(risk, qsTr("Safe"), qsTr("Rebuilds"), qsTr("Review"), "");
    }

    function symbol(risk): string {
        return pick(risk, "checkmark.circle.fill", "arrow.triangle.2.circlepath", "exclamationmark.triangle.fill", "");
    }

    function explanation(risk): string {
        return pick(risk, qsTr("Regenerated automatically; at worst the next launch is slightly slower."), qsTr("Regenerable, but costs time or bandwidth (re-download, full rebuild)."), qsTr("May contain data you created or cannot easily recreate. Decide manually."), "");
    }

    // The line beside a suggestion's name.
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
