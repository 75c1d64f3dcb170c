#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/printing/output/PortMap.h>

#include <gtest/gtest.h>

using namespace Zelmar01;

namespace {

std::string errorOf(const std::string &setting)
{
    TPortMap map;
    try {
        map.Set(setting, "ports.conf : ligne 3");
    } catch (const EConvertError &error) {
        return error.what();
    }
    return {};
}

} // namespace

TEST(PortMap, namesAreComparedToTheLetter)
{
    for (const auto *name : {"LPT1:", "LPT2:", "COM1:", "COM2:", "COM3:", "COM4:"})
        EXPECT_TRUE(IsLocalPortName(name)) << name;
    for (const auto *name : {"lpt1:", "LPT1", "LPT3:", "COM5:", "null", "NUL", "", "LPT1: ", "Par défaut"})
        EXPECT_FALSE(IsLocalPortName(name)) << name;
}

#ifndef _WIN32
TEST(PortMap, namesStandForTheUsualDevices)
{
    const auto map = TPortMap::Defaults();
    EXPECT_EQ(map.Find("LPT2:")->Devices, (std::vector<std::string>{"/dev/lp1", "/dev/usb/lp1"}));
    EXPECT_EQ(map.Find("COM4:")->Devices,
              (std::vector<std::string>{"/dev/ttyS3", "/dev/ttyUSB3", "/dev/ttyACM3"}));
    EXPECT_EQ(map.Ports().size(), LocalPortNames.size());
}
#endif

TEST(PortMap, readsSettings)
{
    TPortMap map;
    map.Set("LPT1:=/dev/usb/lp3", "");
    map.Set(" COM1: = /dev/serial/by-id/usb-1=x , speed=19200,bits = 7, parity=even, stop=2, flow=xonxoff ",
            "");
    ASSERT_NE(map.Find("LPT1:"), nullptr);
    EXPECT_EQ(*map.Find("LPT1:"), (TPortTarget{{"/dev/usb/lp3"}, {}, {}}));
    EXPECT_EQ(*map.Find("COM1:"),
              (TPortTarget{
                  {"/dev/serial/by-id/usb-1=x"}, {19200, 7, TParity::Even, 2, TFlowControl::XonXoff}, {}}));
    EXPECT_EQ(map.Find("COM2:"), nullptr);

    TPortMap host;
    host.Set("LPT1:", {{"/tmp/fifo"}, {}, TRegularFile::Append});
    map.Overlay(host);
    EXPECT_EQ(map.Find("LPT1:")->Devices.front(), "/tmp/fifo");
    EXPECT_EQ(map.Find("COM1:")->Line.Speed, 19200U);
}

TEST(PortMap, refusesWhatItCannotUnderstandAndSaysWhere)
{
    struct TBad
    {
        std::string Setting, Reason;
    };
    for (const auto &bad : {TBad{"LPT3:=/dev/lp2", "port inconnu « LPT3: »"},
                            {"/dev/lp0", "port inconnu « /dev/lp0 »"},
                            {"LPT1:", "périphérique manquant"},
                            {"LPT1:= ,speed=9600", "périphérique manquant"},
                            {"COM1:=/dev/x,speed=9601", "valeur inconnue « 9601 »"},
                            {"COM1:=/dev/x,speed=-9600", "valeur inconnue « -9600 »"},
                            {"COM1:=/dev/x,bits=5", "valeur inconnue « 5 »"},
                            {"COM1:=/dev/x,parity=mark", "valeur inconnue « mark »"},
                            {"COM1:=/dev/x,flow", "valeur inconnue «  »"},
                            {"COM1:=/dev/x,baud=9600", "réglage inconnu « baud »"}})
        EXPECT_EQ(errorOf(bad.Setting),
                  "ports.conf : ligne 3 : " + bad.Reason + " dans « " + bad.Setting + " »");
}
