#include "dgRenderer.h"

dgRenderer::~dgRenderer() = default;
