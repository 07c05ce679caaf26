#include "BrimloApp/Components/SymbolTable.h"

#include <algorithm>
#include <array>

namespace Brimlo::SymbolTable {
namespace {

constexpr auto kEntries = std::to_array<Entry>({
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
static_assert(std::ranges::is_sorted(kEntries, {}, &Entry::symbol));

}  // namespace

std::span<const Entry> entries() {
    return kEntries;
}

std::optional<std::string_view> file(const std::string_view symbol) {
    const auto* found = std::ranges::lower_bound(kEntries, symbol, {}, &Entry::symbol);
    if (found == kEntries.end() || found->symbol != symbol) {
        return std::nullopt;
    }
    return found->file;
}

}  // namespace Brimlo::SymbolTable
