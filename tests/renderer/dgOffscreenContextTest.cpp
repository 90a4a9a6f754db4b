#include "picture.h"

#include <epoxy/egl.h>

#include <cstdlib>

namespace {

using dgOffscreenContextTest = Pictures;

/// What EGL holds as current on this thread.
struct Current
{
    Current()
        : display(eglGetCurrentDisplay()),
          context(eglGetCurrentContext()),
          draw_surface(eglGetCurrentSurface(EGL_DRAW)),
          read_surface(eglGetCurrentSurface(EGL_READ)),
          api(eglQueryAPI())
    {}
    bool operator==(Current const&) const = default;

    EGLDisplay display;
    EGLContext context;
    EGLSurface draw_surface;
    EGLSurface read_surface;
    EGLenum api;
};

/// Ends this process with 0 when a renderer starts, or, where @p problem says a word, when it is the reason
/// why none does.
void start_and_exit(char const* problem)
{
    utString reason;
    dgOffscreenRenderer* const renderer = dgOffscreenRenderer::create(reason);
    bool const as_expected =
        problem ? !renderer && reason.locate_substring(problem) >= 0 : renderer && reason.invalid();
    if (renderer)
        renderer->unreference();
    std::exit(as_expected ? 0 : 1);
}

} // namespace

TEST_F(dgOffscreenContextTest, LeavesCurrentWhatWasCurrent)
{
    giTriBlock const block = square();
    Current const nothing;
    ASSERT_EQ(nothing.context, EGL_NO_CONTEXT);
    EXPECT_TRUE(draw_blocks(gsColour(1, 1, 1), {&block}));
    EXPECT_EQ(Current(), nothing);

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

    Current const before;
    EXPECT_TRUE(draw_blocks(gsColour(1, 1, 1), {&block}));
    EXPECT_EQ(Current(), before);
    utString reason;
    std::unique_ptr<dgOffscreenRenderer, Unreference> second(dgOffscreenRenderer::create(reason));
    ASSERT_TRUE(second) << reason.c_str();
    EXPECT_EQ(Current(), before);
    second.reset();
    EXPECT_EQ(Current(), before);

    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroySurface(display, surface);
    eglDestroyContext(display, context);
}

TEST_F(dgOffscreenContextTest, SeveralRenderersLiveBesideAndAfterEachOther)
{
    EXPECT_FALSE(renderer->device().empty());
    giTriBlock const block = square();
    Image const first = draw_blocks(gsColour(1, 1, 1), {&block});
    for (int i = 0; i < 2; ++i) {
        utString reason;
        std::unique_ptr<dgOffscreenRenderer, Unreference> other(dgOffscreenRenderer::create(reason));
        ASSERT_TRUE(other) << reason.c_str();
        other->reference();
        renderer.swap(other);
        EXPECT_TRUE(draw_blocks(gsColour(1, 1, 1), {&block})->equal(first.get()));
        renderer.swap(other);
        other.reset();
        EXPECT_TRUE(draw_blocks(gsColour(1, 1, 1), {&block})->equal(first.get()));
    }
}

// Each start is in a process of its own, which has loaded no driver yet, and writes nothing.
TEST(dgOffscreenContextDeathTest, StartsOrSaysQuietlyWhatIsMissing)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    struct
    {
        char const* variable;
        char const* value;
        char const* problem;
    } const cases[] = {
        // Where the driver may not make its cache of shaders, it tells the user so.
        {"XDG_CACHE_HOME", "/dev/null", nullptr},
        {"HOME", "/nowhere", nullptr},
        {"__EGL_VENDOR_LIBRARY_FILENAMES", "/nowhere", "no EGL driver"},
        {"LIBGL_DRIVERS_PATH", "/nowhere", "cannot be initialised"},
        {"MESA_GL_VERSION_OVERRIDE", "3.0", "makes no OpenGL 3.3 core context"},
    };
    for (auto const& [variable, value, problem] : cases)
        EXPECT_EXIT(
            {
                clearenv();
                setenv(variable, value, 1);
                start_and_exit(problem);
            },
            testing::ExitedWithCode(0), testing::Eq(""))
            << variable;
}
