#include "dgBase.h"

dgBase::~dgBase() = default;

void dgBase::unreference()
{
    if (--m_references <= 0)
        delete this;
}
