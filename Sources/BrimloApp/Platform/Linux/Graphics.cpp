#include "BrimloApp/Platform/Graphics.h"

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtGui/QOffscreenSurface>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>

#include <algorithm>
#include <array>

namespace Brimlo::Platform {
namespace {

/// The kernel's doors to a graphics processor. Without one there is no need to load OpenGL, which
/// takes longer than all else at the start.
bool hasDevice() {
    return !QDir{"/dev/dri"}.entryList({"renderD*"}, QDir::System).isEmpty() ||
           QDir{}.exists("/dev/nvidia0");
}

/// The name of what draws; empty when there is no OpenGL.
QByteArray renderer() {
    QOpenGLContext context;
    QOffscreenSurface surface;
    surface.create();
    if (!context.create() || !context.makeCurrent(&surface)) {
        return {};
    }
    const auto* const name = context.functions()->glGetString(GL_RENDERER);
    return QByteArray{reinterpret_cast<const char*>(name)}.toLower();  // NOLINT(*-reinterpret-cast)
}

}  // namespace

bool drawsInSoftware() {
    constexpr std::array kProcessors{"llvmpipe", "softpipe", "swrast", "swiftshader", "software"};
    if (!hasDevice()) {
        return true;
    }
    const QByteArray name = renderer();
    return name.isEmpty() || std::ranges::any_of(kProcessors, [&](const char* processor) {
               return name.contains(processor);
           });
}

}  // namespace Brimlo::Platform
