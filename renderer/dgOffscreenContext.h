// An OpenGL context without a window.
#pragma once

#include "utString.h"

#include <memory>

/// An OpenGL 3.3 core context of its own, current only within a Scope.
///
/// An EGL display belongs to the whole process: whoever asks for the same one gets the same handle, and
/// terminating it ends the contexts of all. So a display that was initialised here stays initialised until
/// the process ends; everything else goes with the context, all the OpenGL objects made in it included.
class dgOffscreenContext
{
public:
    /// @param reason  receives in words what is missing when there is no context
    /// @return null when there is none
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

        /// Whether the context could be made current; no OpenGL function may be called where it could not.
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
