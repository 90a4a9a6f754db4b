// The actions of a singleton's access function.
#pragma once

enum utSingletonAccessAction
{
    utSingletonGet = 0,   ///< create on first use, return the instance
    utSingletonDelete = 1 ///< delete the instance if there is one, return null
};
