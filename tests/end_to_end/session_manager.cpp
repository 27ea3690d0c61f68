// A stand-in for a desktop's session manager (XSMP). Says at which address programs find it, that one has come, and,
// for each line it reads, "end" or "cancel", what became of asking that program to save itself before the session ends.

#include <array>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>

#include <X11/ICE/ICElib.h>
#include <X11/ICE/ICEutil.h>
#include <X11/SM/SMlib.h>
#include <poll.h>

namespace {

SmsConn client = nullptr;
bool isEnding = false;

Bool admitAnyone(char*)
{
    return True;
}

Status registerClient(SmsConn connection, SmPointer, char* previous)
{
    std::free(previous);
    client = connection;
    SmsRegisterClientReply(connection, SmsGenerateClientID(connection));
    SmsSaveYourself(connection, SmSaveLocal, False, SmInteractStyleNone, False); // a manager's first word
    std::cout << "registered" << std::endl;
    return 1;
}

void saved(SmsConn connection, SmPointer, Bool success)
{
    std::cout << (success ? "saved" : "not saved") << std::endl;
    if (isEnding)
        SmsDie(connection);
    else
        SmsSaveComplete(connection);
}

void freeProperties(SmsConn, SmPointer, int count, SmProp** properties)
{
    for (int i = 0; i < count; ++i)
        SmFreeProperty(properties[i]);
    std::free(properties);
}

Status accept(SmsConn, SmPointer, unsigned long* mask, SmsCallbacks* callbacks, char**)
{
    *mask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
            SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask | SmsSaveYourselfDoneProcMask |
            SmsCloseConnectionProcMask | SmsSetPropertiesProcMask | SmsDeletePropertiesProcMask |
            SmsGetPropertiesProcMask;
    callbacks->register_client.callback = registerClient;
    callbacks->interact_request.callback = [](SmsConn connection, SmPointer, int) { SmsInteract(connection); };
    callbacks->interact_done.callback = [](SmsConn, SmPointer, Bool) {};
    callbacks->save_yourself_request.callback = [](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {};
    callbacks->save_yourself_phase2_request.callback = [](SmsConn connection, SmPointer) {
        SmsSaveYourselfPhase2(connection);
    };
    callbacks->save_yourself_done.callback = saved;
    callbacks->close_connection.callback = [](SmsConn, SmPointer, int, char**) {
        client = nullptr;
        std::cout << "gone" << std::endl;
    };
    callbacks->set_properties.callback = freeProperties;
    callbacks->delete_properties.callback = [](SmsConn, SmPointer, int, char**) {};
    callbacks->get_properties.callback = [](SmsConn connection, SmPointer) {
        SmsReturnProperties(connection, 0, nullptr);
    };
    return 1;
}

void obey(const std::string& line)
{
    if (!client)
        return;
    isEnding = line == "end";
    SmsSaveYourself(client, SmSaveBoth, True, SmInteractStyleAny, False);
    if (!isEnding)
        SmsShutdownCancelled(client);
}

} // namespace

int main()
{
    std::array<char, 256> error{};
    int count = 0;
    IceListenObj* listeners = nullptr;
    if (!SmsInitialize("stand-in", "1", accept, nullptr, admitAnyone, int(error.size()), error.data()) ||
        !IceListenForConnections(&count, &listeners, int(error.size()), error.data())) {
        std::cerr << error.data() << std::endl;
        return 1;
    }
    int local = 0;
    while (local < count - 1 && std::strncmp(IceGetListenConnectionString(listeners[local]), "local/", 6) != 0)
        ++local;
    IceSetHostBasedAuthProc(listeners[local], admitAnyone);
    std::cout << IceGetListenConnectionString(listeners[local]) << std::endl;
    IceConn talk = nullptr;
    for (;;) {
        std::array<pollfd, 3> files{
            {{.fd = 0, .events = POLLIN, .revents = 0},
             {.fd = IceGetListenConnectionNumber(listeners[local]), .events = POLLIN, .revents = 0},
             {.fd = talk ? IceConnectionNumber(talk) : -1, .events = POLLIN, .revents = 0}}};
        ::poll(files.data(), files.size(), -1);
        std::string line;
        if (files[0].revents != 0) {
            if (!std::getline(std::cin, line))
                return 0;
            obey(line);
        }
        IceAcceptStatus status{};
        if (files[1].revents != 0)
            talk = IceAcceptConnection(listeners[local], &status);
        if (files[2].revents != 0 && IceProcessMessages(talk, nullptr, nullptr) != IceProcessMessagesSuccess) {
            IceCloseConnection(talk);
            talk = nullptr;
        }
    }
}
