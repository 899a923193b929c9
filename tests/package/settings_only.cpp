#include <basic/bas_user_defaults.h>

#include <cstring>

int main(int, char** arguments)
{
    BASUserDefaults::InitUserDefaults("app", arguments[1]);
    BASUserDefaults* settings = BASUserDefaults::GetUserDefaults("app");
    settings->SetString("accent", "32,186,234");
    settings->WriteAll();
    const bool same = settings->ReadAll() && std::strcmp(settings->GetString("accent"), "32,186,234") == 0;
    return same && settings->GetRGB("accent") == BASRGB{32, 186, 234} ? 0 : 1;
}
