#include "picture.h"

#include <epoxy/egl.h>

#include <cstdlib>
#include <tuple>

namespace {

using dgOffscreenContextTest = Pictures;

/// What EGL holds as current on this thread.
auto current()
{
    return std::tuple(eglGetCurrentDisplay(), eglGetCurrentContext(), eglGetCurrentSurface(EGL_DRAW),
                      eglGetCurrentSurface(EGL_READ), eglQueryAPI());
}

/// Ends this process with 0 when a renderer starts in an environment of one variable, or, where @p problem
/// says a word, when it is the reason why none does.
void start_in(char const* variable, char const* value, char const* problem)
{
    clearenv();
    setenv(variable, value, 1);
    utString reason;
    Renderer const renderer(dgOffscreenRenderer::create(reason));
    bool const as_expected =
        problem ? !renderer && reason.locate_substring(problem) >= 0 : renderer && reason.invalid();
    std::exit(as_expected ? 0 : 1);
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

// Each start is in a process of its own, which has loaded no driver yet, and writes nothing.
TEST(dgOffscreenContextDeathTest, StartsOrSaysQuietlyWhatIsMissing)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    char const* const cases[][3] = {
        // Where the driver may not make its cache of shaders, it tells the user so.
        {"XDG_CACHE_HOME", "/dev/null", nullptr},
        {"__EGL_VENDOR_LIBRARY_FILENAMES", "/nowhere", "no EGL driver"},
        {"LIBGL_DRIVERS_PATH", "/nowhere", "cannot be initialised"},
        {"MESA_GL_VERSION_OVERRIDE", "3.0", "makes no OpenGL 3.3 core context"},
    };
    for (auto const& [variable, value, problem] : cases)
        EXPECT_EXIT(start_in(variable, value, problem), testing::ExitedWithCode(0), testing::Eq(""))
            << variable;
}
