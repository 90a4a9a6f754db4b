#include "dgOffscreenProgram.h"

#include <epoxy/gl.h>

#include <algorithm>

namespace {

// The light: where from, in view space, and how strong. With the ambient and diffuse factors that materials
// are drawn with, a surface that faces the viewer shows its own colour.
giVector3 const light_direction(-0.35, 0.35, 0.87);
constexpr double light_intensity = 1.1;
constexpr double ambient_intensity = 5.2;

char const* const version = "#version 330 core\n";

// Switches on what keeps to a part of the frame.
char const* const keep_to_part = "#define KEEP_TO_PART\n";

char const* const vertex_source = R"(
layout(location = 0) in vec3 place;
layout(location = 1) in vec3 normal;
layout(location = 2) in vec2 coordinate;
uniform mat3 to_view;
out vec3 view_normal;
out vec2 image_coordinate;

void main()
{
    gl_Position = vec4(place, 1.0);
    float square = dot(normal, normal);
    view_normal = square > 0.0 ? to_view * (normal * inversesqrt(square)) : vec3(0.0);
    image_coordinate = coordinate;
}
)";

char const* const fragment_source = R"(
in vec3 view_normal;
in vec2 image_coordinate;
uniform vec4 part; // of the frame: its low and its high corner
uniform float depth_scale; // pixels that the whole range of depth stands for
uniform bool textured;
uniform sampler2D image;
uniform bool lit;
uniform vec3 surface;
uniform float ambient; // with the lights' intensities in them
uniform float diffuse;
uniform vec3 specular;
uniform float exponent;
uniform vec3 emission;
uniform vec3 light;
uniform vec3 half_way;
out vec4 colour;

// The normal turned to the viewer: to the side of the triangle that is seen, not by its own z, which on a
// smooth surface's outline may point away from the viewer a little.
vec3 shading_normal()
{
    vec3 face = vec3(dFdx(gl_FragCoord.z) * depth_scale, dFdy(gl_FragCoord.z) * depth_scale, 1.0);
    vec3 normal = dot(view_normal, face) < 0.0 ? -view_normal : view_normal;
    return normalize(dot(normal, normal) < 1e-8 ? face : normal);
}

void main()
{
    vec3 base = surface;
    if (textured)
        base *= texture(image, image_coordinate).rgb;
    if (lit) {
        vec3 normal = shading_normal();
        float facing = max(dot(normal, light), 0.0);
        float highlight = facing > 0.0 ? pow(max(dot(normal, half_way), 0.0), exponent) : 0.0;
        base = base * (ambient + diffuse * facing) + emission + specular * highlight;
    }
    colour = vec4(base, 1.0);
#ifdef KEEP_TO_PART
    if (any(lessThan(gl_FragCoord.xy, part.xy)) || any(greaterThan(gl_FragCoord.xy, part.zw)))
        discard;
#endif
}
)";

bool compile(GLuint program, GLenum stage, char const* switches, char const* source, utString& problem)
{
    GLuint const shader = glCreateShader(stage);
    char const* const parts[] = {version, switches, source};
    glShaderSource(shader, 3, parts, nullptr);
    glCompileShader(shader);
    GLint compiled = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    if (!compiled) {
        char log[512] = "";
        glGetShaderInfoLog(shader, sizeof log, nullptr, log);
        problem = log;
    }
    glAttachShader(program, shader);
    glDeleteShader(shader); // when the program goes
    return compiled != 0;
}

float single(double value)
{
    return static_cast<float>(std::clamp(value, -1e30, 1e30));
}

void set(int location, double value)
{
    glUniform1f(location, single(value));
}

void set(int location, gsColour const& colour, double factor = 1.0)
{
    glUniform3f(location, single(colour.red() * factor), single(colour.green() * factor),
                single(colour.blue() * factor));
}

void set(int location, giVector3 direction)
{
    direction.unitize();
    glUniform3f(location, single(direction.x), single(direction.y), single(direction.z));
}

void set_rows(int location, giVector3 const& first, giVector3 const& second, giVector3 const& third)
{
    GLfloat rows[9];
    int at = 0;
    for (giVector3 const& row : {first, second, third})
        for (double const component : {row.x, row.y, row.z})
            rows[at++] = single(component);
    glUniformMatrix3fv(location, 1, GL_TRUE, rows);
}

} // namespace

bool dgOffscreenProgram::build(Extent extent, utString& problem)
{
    char const* const switches = extent == Extent::part ? keep_to_part : "";
    m_program = glCreateProgram();
    if (!compile(m_program, GL_VERTEX_SHADER, switches, vertex_source, problem) ||
        !compile(m_program, GL_FRAGMENT_SHADER, switches, fragment_source, problem))
        return false;
    glLinkProgram(m_program);
    GLint linked = 0;
    glGetProgramiv(m_program, GL_LINK_STATUS, &linked);
    if (!linked) {
        char log[512] = "";
        glGetProgramInfoLog(m_program, sizeof log, nullptr, log);
        problem = log;
        return false;
    }
    auto const location = [this](char const* name) { return glGetUniformLocation(m_program, name); };
    m_to_view = location("to_view");
    m_part = location("part");
    m_depth_scale = location("depth_scale");
    m_textured = location("textured");
    m_lit = location("lit");
    m_surface = location("surface");
    m_ambient = location("ambient");
    m_diffuse = location("diffuse");
    m_specular = location("specular");
    m_exponent = location("exponent");
    m_emission = location("emission");

    glUseProgram(m_program);
    giVector3 light = light_direction;
    light.unitize();
    set(location("light"), light);
    set(location("half_way"), giVector3(light.x, light.y, light.z + 1.0)); // the viewer is at (0, 0, 1)
    m_built = true;
    return true;
}

void dgOffscreenProgram::use(dgProjection const& projection, dgDrawState const& state, bool textured,
                             dgOffscreenPart const& part) const
{
    dgReflection const& reflection = state.reflection;
    glUseProgram(m_program);
    set_rows(m_to_view, projection.right, projection.up, projection.normal);
    glUniform4f(m_part, single(part.low_x), single(part.low_y), single(part.high_x), single(part.high_y));
    set(m_depth_scale, 2.0 * projection.half_depth * projection.scale);
    glUniform1i(m_textured, textured);
    glUniform1i(m_lit, state.reflection_model != dgReflectionNone);
    set(m_surface, state.surface);
    set(m_ambient, reflection.ambient * ambient_intensity);
    set(m_diffuse, reflection.diffuse * light_intensity);
    set(m_specular, reflection.specular_colour, reflection.specular * light_intensity);
    set(m_exponent, std::max(reflection.specular_exponent, 0.0));
    set(m_emission, reflection.emission);
}
