#include "dgOffscreenContext.h"

#include "dgOffscreenQuiet.h"

#include <epoxy/egl.h>
#include <epoxy/gl.h>

#include <algorithm>
#include <dlfcn.h>
#include <string_view>
#include <vector>

namespace {

struct Candidate
{
    char const* name;
    EGLDisplay display;
};

bool has_word(char const* words, std::string_view word)
{
    std::string_view rest = words ? words : "";
    while (!rest.empty()) {
        std::size_t const end = std::min(rest.find(' '), rest.size());
        if (rest.substr(0, end) == word)
            return true;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return false;
}

bool can_load(char const* library)
{
    void* const handle = dlopen(library, RTLD_LAZY | RTLD_LOCAL);
    if (handle)
        dlclose(handle);
    return handle != nullptr;
}

// libepoxy ends the process where a library that it needs is missing, so it is asked for first.
bool libraries_are_there(utString& reason)
{
    if (!epoxy_has_egl()) {
        reason = "libEGL.so.1 cannot be loaded";
        return false;
    }
    if (!can_load("libOpenGL.so.0") && !can_load("libGL.so.1")) {
        reason = "neither libOpenGL.so.0 nor libGL.so.1 can be loaded";
        return false;
    }
    return true;
}

template <class Function>
Function extension_function(char const* name)
{
    // Not through libepoxy's own names: it ends the process for a function that is not there.
    return reinterpret_cast<Function>(eglGetProcAddress(name));
}

/// Every device, those that draw in hardware before those that draw in software.
std::vector<Candidate> devices(PFNEGLGETPLATFORMDISPLAYEXTPROC platform_display)
{
    auto const query = extension_function<PFNEGLQUERYDEVICESEXTPROC>("eglQueryDevicesEXT");
    auto const query_text = extension_function<PFNEGLQUERYDEVICESTRINGEXTPROC>("eglQueryDeviceStringEXT");
    EGLint count = 0;
    if (!query || !query_text || !query(0, nullptr, &count) || count < 1)
        return {};
    std::vector<EGLDeviceEXT> handles(static_cast<std::size_t>(count));
    if (!query(count, handles.data(), &count))
        return {};
    handles.resize(static_cast<std::size_t>(count));

    auto const draws_in_hardware = [query_text](EGLDeviceEXT device) {
        return !has_word(query_text(device, EGL_EXTENSIONS), "EGL_MESA_device_software");
    };
    auto const software = std::stable_partition(handles.begin(), handles.end(), draws_in_hardware);
    std::vector<Candidate> found;
    for (auto device = handles.begin(); device != handles.end(); ++device)
        found.push_back({device < software ? "graphics device" : "software device",
                         platform_display(EGL_PLATFORM_DEVICE_EXT, *device, nullptr)});
    return found;
}

/// The displays that might do, the best first: graphics hardware, then software that needs no window system,
/// and the window system last.
std::vector<Candidate> candidates()
{
    char const* const extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    auto const platform_display =
        extension_function<PFNEGLGETPLATFORMDISPLAYEXTPROC>("eglGetPlatformDisplayEXT");
    bool const has_platforms = platform_display && has_word(extensions, "EGL_EXT_platform_base");
    bool const lists_devices =
        has_word(extensions, "EGL_EXT_device_enumeration") || has_word(extensions, "EGL_EXT_device_base");

    std::vector<Candidate> found;
    if (has_platforms && lists_devices && has_word(extensions, "EGL_EXT_platform_device"))
        found = devices(platform_display);
    if (has_platforms && has_word(extensions, "EGL_MESA_platform_surfaceless"))
        found.push_back({"surfaceless platform",
                         platform_display(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr)});
    found.push_back({"default display", eglGetDisplay(EGL_DEFAULT_DISPLAY)});
    std::erase_if(found, [](Candidate const& candidate) { return candidate.display == EGL_NO_DISPLAY; });
    return found;
}

/// Keeps OpenGL the API that EGL's functions mean on this thread.
class OpenGLBound
{
public:
    OpenGLBound() : m_before(eglQueryAPI()), m_bound(eglBindAPI(EGL_OPENGL_API) == EGL_TRUE) {}
    OpenGLBound(OpenGLBound const&) = delete;
    OpenGLBound& operator=(OpenGLBound const&) = delete;
    ~OpenGLBound() { eglBindAPI(m_before); }

    explicit operator bool() const { return m_bound; }

private:
    EGLenum m_before;
    bool m_bound;
};

} // namespace

std::unique_ptr<dgOffscreenContext> dgOffscreenContext::create(utString& reason)
{
    dgOffscreenQuiet const quiet;
    if (!libraries_are_there(reason))
        return nullptr;
    utString problems;
    for (Candidate const& candidate : candidates()) {
        utString problem;
        std::unique_ptr<dgOffscreenContext> context(new dgOffscreenContext);
        if (context->start(candidate.display, problem))
            return context;
        problems += problems.empty() ? "no EGL display offers OpenGL 3.3: " : "; ";
        problems += candidate.name;
        problems += ": ";
        problems += problem;
    }
    reason = problems.empty() ? utString("no EGL driver is installed") : problems;
    return nullptr;
}

bool dgOffscreenContext::start(EGLDisplay display, utString& problem)
{
    m_display = display;
    if (!eglInitialize(display, nullptr, nullptr)) {
        problem = "cannot be initialised";
        return false;
    }
    OpenGLBound const bound;
    if (!bound) {
        problem = "has no OpenGL";
        return false;
    }
    EGLConfig config = EGL_NO_CONFIG_KHR;
    if (!find_config(config, problem))
        return false;
    EGLint const wanted[] = {EGL_CONTEXT_MAJOR_VERSION,
                             3,
                             EGL_CONTEXT_MINOR_VERSION,
                             3,
                             EGL_CONTEXT_OPENGL_PROFILE_MASK,
                             EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                             EGL_NONE};
    m_context = eglCreateContext(display, config, EGL_NO_CONTEXT, wanted);
    if (m_context == EGL_NO_CONTEXT) {
        problem = "makes no OpenGL 3.3 core context";
        return false;
    }
    if (!has_word(eglQueryString(display, EGL_EXTENSIONS), "EGL_KHR_surfaceless_context")) {
        EGLint const smallest[] = {EGL_WIDTH, 1, EGL_HEIGHT, 1, EGL_NONE};
        m_surface = eglCreatePbufferSurface(display, config, smallest);
    }
    return check_version(problem);
}

bool dgOffscreenContext::find_config(EGLConfig& config, utString& problem) const
{
    EGLint const wanted[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                             EGL_NONE};
    EGLint count = 0;
    if (eglChooseConfig(m_display, wanted, &config, 1, &count) && count > 0)
        return true;
    config = EGL_NO_CONFIG_KHR;
    if (has_word(eglQueryString(m_display, EGL_EXTENSIONS), "EGL_KHR_no_config_context"))
        return true;
    problem = "has no configuration for OpenGL";
    return false;
}

bool dgOffscreenContext::check_version(utString& problem) const
{
    Scope const scope(*this);
    if (!scope) {
        problem = "its context cannot be made current";
        return false;
    }
    if (epoxy_gl_version() < 33) {
        problem = "its OpenGL is older than 3.3";
        return false;
    }
    return true;
}

dgOffscreenContext::~dgOffscreenContext()
{
    if (m_surface)
        eglDestroySurface(m_display, m_surface);
    if (m_context)
        eglDestroyContext(m_display, m_context);
}

dgOffscreenContext::Scope::Scope(dgOffscreenContext const& context)
    : m_own_display(context.m_display),
      m_display(eglGetCurrentDisplay()),
      m_context(eglGetCurrentContext()),
      m_draw_surface(eglGetCurrentSurface(EGL_DRAW)),
      m_read_surface(eglGetCurrentSurface(EGL_READ)),
      m_api(eglQueryAPI())
{
    eglBindAPI(EGL_OPENGL_API);
    m_current = eglMakeCurrent(context.m_display, context.m_surface, context.m_surface, context.m_context);
}

dgOffscreenContext::Scope::~Scope()
{
    if (m_current && m_context)
        eglMakeCurrent(m_display, m_draw_surface, m_read_surface, m_context);
    else if (m_current)
        eglMakeCurrent(m_own_display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglBindAPI(m_api);
}
