#include "dgOffscreenContext.h"

#include <epoxy/egl.h>
#include <epoxy/gl.h>

#include <algorithm>
#include <dlfcn.h>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace {

// Of EGL_EXT_device_drm_render_node, which libepoxy's header does not have.
constexpr EGLint drm_render_node_file = 0x3377;

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

/// Devices of the two kinds: those that draw in hardware, and those that draw in software.
class Devices
{
public:
    Devices()
        : m_query(extension_function<PFNEGLQUERYDEVICESEXTPROC>("eglQueryDevicesEXT")),
          m_query_text(extension_function<PFNEGLQUERYDEVICESTRINGEXTPROC>("eglQueryDeviceStringEXT"))
    {
        EGLint count = 0;
        if (!m_query || !m_query_text || !m_query(0, nullptr, &count) || count < 1)
            return;
        std::vector<EGLDeviceEXT> all(static_cast<std::size_t>(count));
        if (!m_query(count, all.data(), &count))
            return;
        all.resize(static_cast<std::size_t>(std::max(count, 0)));
        for (EGLDeviceEXT const device : all)
            (is_software(device) ? software : hardware).push_back(device);
        // A driver says a word to standard error about a file that it may not open.
        std::erase_if(hardware, [this](EGLDeviceEXT device) { return !may_be_opened(device); });
    }

    std::vector<EGLDeviceEXT> hardware;
    std::vector<EGLDeviceEXT> software;

private:
    bool is_software(EGLDeviceEXT device) const
    {
        return has_word(m_query_text(device, EGL_EXTENSIONS), "EGL_MESA_device_software");
    }

    bool may_be_opened(EGLDeviceEXT device) const
    {
        char const* const extensions = m_query_text(device, EGL_EXTENSIONS);
        char const* path = nullptr;
        if (has_word(extensions, "EGL_EXT_device_drm_render_node"))
            path = m_query_text(device, drm_render_node_file);
        if (!path && has_word(extensions, "EGL_EXT_device_drm"))
            path = m_query_text(device, EGL_DRM_DEVICE_FILE_EXT);
        return !path || access(path, R_OK | W_OK) == 0;
    }

    PFNEGLQUERYDEVICESEXTPROC m_query;
    PFNEGLQUERYDEVICESTRINGEXTPROC m_query_text;
};

/// The displays that might do, the best first: graphics hardware, then software that needs no window system.
/// The software device comes before the surfaceless platform, which tries the hardware again and complains
/// to standard error where it may not open it.
std::vector<Candidate> candidates()
{
    char const* const extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    auto const platform_display =
        extension_function<PFNEGLGETPLATFORMDISPLAYEXTPROC>("eglGetPlatformDisplayEXT");
    bool const has_platforms = has_word(extensions, "EGL_EXT_platform_base") && platform_display;

    std::vector<Candidate> found;
    auto const add = [&](char const* name, EGLDisplay display) {
        if (display != EGL_NO_DISPLAY)
            found.push_back({name, display});
    };
    bool const has_devices =
        has_platforms && has_word(extensions, "EGL_EXT_platform_device") &&
        (has_word(extensions, "EGL_EXT_device_enumeration") || has_word(extensions, "EGL_EXT_device_base"));
    if (has_devices) {
        Devices const devices;
        for (EGLDeviceEXT const device : devices.hardware)
            add("graphics device", platform_display(EGL_PLATFORM_DEVICE_EXT, device, nullptr));
        for (EGLDeviceEXT const device : devices.software)
            add("software device", platform_display(EGL_PLATFORM_DEVICE_EXT, device, nullptr));
    }
    if (has_platforms && has_word(extensions, "EGL_MESA_platform_surfaceless"))
        add("surfaceless platform",
            platform_display(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr));
    add("default display", eglGetDisplay(EGL_DEFAULT_DISPLAY));
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
