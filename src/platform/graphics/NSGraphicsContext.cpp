#include "platform/graphics/NSGraphicsContext.h"

namespace
{

Ref<NSGraphicsContext>& current()
{
    thread_local Ref<NSGraphicsContext> context;
    return context;
}

} // namespace

NSGraphicsContext* NSGraphicsContext::currentContext()
{
    return current().get();
}

NSGraphicsContext::Scope::Scope(NSGraphicsContext& context)
    : _previous(std::exchange(current(), Ref(&context)))
{
}

NSGraphicsContext::Scope::~Scope()
{
    current() = _previous;
}
