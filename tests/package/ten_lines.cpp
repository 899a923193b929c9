#include <Tessaline.h>

int main()
{
    Ref<NSApplication> application = NSApplication::sharedApplication();
    Ref<ZuToolButton> button = make<ZuToolButton>()->initWithFrame(NSMakeRect(0, 0, 280, 72));
    button->setTitle(NSString::stringWithUTF8String("Contacts"));
    button->setToolTip(NSString::stringWithUTF8String("People with their numbers and addresses."));
    Ref<NSWindow> window =
        make<NSWindow>()->initWithContentRect_styleMask(button->frame(), NSWindowStyleMaskTitled);
    window->setContentView(button);
    window->makeKeyAndOrderFront();
    return application->run();
}
