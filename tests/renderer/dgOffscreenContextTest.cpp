#include "picture.h"

#include <epoxy/egl.h>

#include <tuple>

namespace {

using dgOffscreenContextTest = Pictures;

/// What EGL holds as current on this thread.
auto current()
{
    return std::tuple(eglGetCurrentDisplay(), eglGetCurrentContext(), eglGetCurrentSurface(EGL_DRAW),
                      eglGetCurrentSurface(EGL_READ), eglQueryAPI());
}

} // namespace

TEST_F(dgOffscreenContextTest, LeavesCurrentWhatWasCurrentAlsoBesideOthers)
{
    Image const first = draw({Square()});
    EXPECT_EQ(eglGetCurrentContext(), EGL_NO_CONTEXT);

    EGLDisplay const display =
        eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    if (!eglInitialize(display, nullptr, nullptr))
        GTEST_SKIP() << "no display to make an application's context on";
    eglBindAPI(EGL_OPENGL_ES_API);
    EGLint const wanted[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_ES2_BIT,
                             EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    ASSERT_TRUE(eglChooseConfig(display, wanted, &config, 1, &count) && count == 1);
    EGLint const version[] = {EGL_CONTEXT_MAJOR_VERSION, 2, EGL_NONE};
    EGLContext const context = eglCreateContext(display, config, EGL_NO_CONTEXT, version);
    EGLSurface const surface = eglCreatePbufferSurface(display, config, nullptr);
    ASSERT_TRUE(eglMakeCurrent(display, surface, surface, context));

    auto const before = current();
    {
        Renderer other = start();
        EXPECT_EQ(current(), before);
        renderer.swap(other);
        EXPECT_TRUE(draw({Square()})->equal(first.get()));
    }
    EXPECT_EQ(current(), before);
    EXPECT_TRUE(draw({Square()})->equal(first.get()));

    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroySurface(display, surface);
    eglDestroyContext(display, context);
}
