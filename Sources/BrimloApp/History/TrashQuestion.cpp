#include "BrimloApp/History/TrashQuestion.h"

#include "BrimloApp/History/History.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Cleaner/Cleaner.h"

namespace Brimlo {

TrashQuestion::TrashQuestion(AppModel& app)
    : app_{app} {}

void TrashQuestion::ask(Subject subject) {
    show({.isOpen = true, .subject = subject});
    runInBackground(
        this,
        [subject, cleaner = app_.cleaner()] {
            return subject == Subject::all ? Cleaner::emptyTrash(true)
                                           : cleaner->purgeOwnTrash(0, true);
        },
        [number = ++number_](TrashQuestion& question, const TrashReport& found) {
            if (question.number_ != number) {
                return;  // Another question was asked meanwhile.
            }
            State state = question.state_;
            state.isMeasured = true;
            state.count = found.removed;
            state.bytes = found.bytes;
            state.frees = words(found.frees());
            question.show(state);
        });
}

void TrashQuestion::answer(bool yes) {
    State state = state_;
    state.isOpen = false;
    show(state);
    if (!yes) {
        return;
    }
    if (isAboutAll()) {
        app_.history()->emptyTrash();
    } else {
        app_.history()->purgeOwnTrash();
    }
}

void TrashQuestion::show(const State& state) {
    assign(*this, state_, state, &TrashQuestion::changed);
}

}  // namespace Brimlo
