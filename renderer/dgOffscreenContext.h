// An OpenGL context without a window.
#pragma once

#include "utString.h"

#include <memory>

/// An OpenGL 3.3 core context of its own, current only within a Scope.
///
/// An EGL display belongs to the whole process, and terminating it ends every context made on it. So a display
/// initialised here stays initialised until the process ends. Everything else is freed with the context, its OpenGL
/// objects included.
class dgOffscreenContext
{
public:
    /// @param reason  receives in words what is missing, on failure
    /// @return null on failure
    static std::unique_ptr<dgOffscreenContext> create(utString& reason);

    dgOffscreenContext(dgOffscreenContext const&) = delete;
    dgOffscreenContext& operator=(dgOffscreenContext const&) = delete;
    ~dgOffscreenContext();

    /// Keeps the context current on this thread; what was current before is current again afterwards.
    class Scope
    {
    public:
        explicit Scope(dgOffscreenContext const& context);
        Scope(Scope const&) = delete;
        Scope& operator=(Scope const&) = delete;
        ~Scope();

        /// Whether the context could be made current; call no OpenGL function when it could not.
        explicit operator bool() const { return m_current; }

    private:
        // EGL's handles, as EGL gives them.
        void* m_own_display;
        void* m_display;
        void* m_context;
        void* m_draw_surface;
        void* m_read_surface;
        unsigned m_api;
        bool m_current = false;
    };

private:
    dgOffscreenContext() = default;
    bool start(void* display, utString& problem);
    bool find_config(void*& config, utString& problem) const;
    bool check_version(utString& problem) const;

    void* m_display = nullptr;
    void* m_context = nullptr;
    void* m_surface = nullptr; // none where contexts work without
};
