#include "samples/samples.h"

#include "cli/console.h"

#include <iostream>
#include <sstream>

namespace torvane {

namespace {

// An amateur on an endurance bicycle with rim brakes on aluminum rims.
constexpr const char* road[] = {
    "humanHeight=178",
    "humanWeight=72",
    "position=bracket",
    "useFtp=on",
    "ftp=250",
    "wear=bike summer",
    "helmet=normal",
    "exceptWheels=on",
    "bikeWeightExceptWheels=5.9",
    "crankLength=172.5",
    "chainringCount=2",
    "chainring[0]=50",
    "chainring[1]=34",
    "sprocketCount=11",
    "sprocket[0]=11",
    "sprocket[1]=12",
    "sprocket[2]=13",
    "sprocket[3]=14",
    "sprocket[4]=15",
    "sprocket[5]=17",
    "sprocket[6]=19",
    "sprocket[7]=21",
    "sprocket[8]=23",
    "sprocket[9]=25",
    "sprocket[10]=28",
    "wheelWeight[0]=750",
    "wheelWeight[1]=950",
    "rimDepth[0]=28",
    "rimDepth[1]=28",
    "spokeCount[0]=20",
    "spokeCount[1]=24",
    "modelYear[0]=2016",
    "modelYear[1]=2016",
    "predictWheel=front",
    "predictWheel=rear",
    "tyreSize[0]=25",
    "tyreSize[1]=25",
    "tyreWeight[0]=230",
    "tyreWeight[1]=230",
    "rollingCoefficient[0]=0.004",
    "rollingCoefficient[1]=0.004",
    "brakeType[0]=rim brake",
    "brakeType[1]=rim brake",
    "brakeMaterial[0][0]=aluminum",
    "brakeMaterial[0][1]=aluminum",
    "brakeWeight[0][0]=430",
    "brakeWeight[0][1]=430",
    "brakeSurfaceSize[0][0]=28",
    "brakeSurfaceSize[0][1]=28",
};

// A light rider for the mountains: low gears, carbon rims of little depth.
constexpr const char* climbing[] = {
    "humanHeight=172",
    "humanWeight=60",
    "position=bracket",
    "useFtp=on",
    "ftp=270",
    "cadenceUsual=85",
    "cadenceShiftUp=105",
    "cadenceShiftDown=78",
    "wear=bike summer",
    "helmet=normal",
    "exceptWheels=on",
    "bikeWeightExceptWheels=5.1",
    "crankLength=170",
    "chainringCount=2",
    "chainring[0]=48",
    "chainring[1]=32",
    "sprocketCount=11",
    "sprocket[0]=11",
    "sprocket[1]=12",
    "sprocket[2]=13",
    "sprocket[3]=14",
    "sprocket[4]=16",
    "sprocket[5]=18",
    "sprocket[6]=20",
    "sprocket[7]=23",
    "sprocket[8]=26",
    "sprocket[9]=29",
    "sprocket[10]=33",
    "wheelWeight[0]=550",
    "wheelWeight[1]=680",
    "rimDepth[0]=25",
    "rimDepth[1]=25",
    "spokeCount[0]=18",
    "spokeCount[1]=24",
    "modelYear[0]=2019",
    "modelYear[1]=2019",
    "predictWheel=front",
    "predictWheel=rear",
    "tyreSize[0]=25",
    "tyreSize[1]=25",
    "tyreWeight[0]=205",
    "tyreWeight[1]=205",
    "rollingCoefficient[0]=0.004",
    "rollingCoefficient[1]=0.004",
    "brakeType[0]=rim brake",
    "brakeType[1]=rim brake",
    "brakeMaterial[0][0]=carbon",
    "brakeMaterial[0][1]=carbon",
    "brakeWeight[0][0]=330",
    "brakeWeight[0][1]=330",
    "brakeSurfaceSize[0][0]=25",
    "brakeSurfaceSize[0][1]=25",
};

// Against the clock: a low position between deep wheels, one large chainring. The rear wheel is deeper than the
// prediction reaches, so its resist is entered.
constexpr const char* timeTrial[] = {
    "humanHeight=182",
    "humanWeight=75",
    "position=aerobar",
    "useFtp=on",
    "ftp=310",
    "wear=skin suit",
    "helmet=aero",
    "shellType=aero",
    "shellAeroRatio=0.7",
    "exceptWheels=on",
    "bikeWeightExceptWheels=6.8",
    "crankLength=170",
    "chainringCount=1",
    "chainring[0]=56",
    "sprocketCount=11",
    "sprocket[0]=11",
    "sprocket[1]=12",
    "sprocket[2]=13",
    "sprocket[3]=14",
    "sprocket[4]=15",
    "sprocket[5]=16",
    "sprocket[6]=17",
    "sprocket[7]=19",
    "sprocket[8]=21",
    "sprocket[9]=23",
    "sprocket[10]=25",
    "wheelWeight[0]=850",
    "wheelWeight[1]=1150",
    "rimDepth[0]=80",
    "rimDepth[1]=250",
    "spokeCount[0]=16",
    "spokeCount[1]=12",
    "modelYear[0]=2020",
    "modelYear[1]=2020",
    "predictWheel=front",
    "wheelResist[1]=10",
    "tyreSize[0]=25",
    "tyreSize[1]=25",
    "tyreWeight[0]=200",
    "tyreWeight[1]=200",
    "rollingCoefficient[0]=0.003",
    "rollingCoefficient[1]=0.003",
    "brakeType[0]=rim brake",
    "brakeType[1]=rim brake",
    "brakeMaterial[0][0]=carbon",
    "brakeMaterial[0][1]=carbon",
    "brakeWeight[0][0]=500",
    "brakeWeight[0][1]=600",
    "brakeSurfaceSize[0][0]=80",
    "brakeSurfaceSize[0][1]=80",
};

// To work and back with luggage, disc brakes and a motor at the hub that fades out up to 25 kph.
constexpr const char* commuter[] = {
    "humanHeight=176",
    "humanWeight=80",
    "position=top position",
    "useFtp=on",
    "ftp=180",
    "cadenceUsual=70",
    "cadenceShiftUp=85",
    "cadenceShiftDown=60",
    "cadencePoweredMax=100",
    "wear=casual summer",
    "helmet=normal",
    "exceptWheels=off",
    "bikeWeight=24",
    "crankLength=170",
    "chainringCount=1",
    "chainring[0]=40",
    "sprocketCount=8",
    "sprocket[0]=11",
    "sprocket[1]=13",
    "sprocket[2]=15",
    "sprocket[3]=18",
    "sprocket[4]=21",
    "sprocket[5]=24",
    "sprocket[6]=28",
    "sprocket[7]=34",
    "wheelWeight[0]=1100",
    "wheelWeight[1]=2400",
    "rimDepth[0]=20",
    "rimDepth[1]=20",
    "spokeCount[0]=32",
    "spokeCount[1]=36",
    "modelYear[0]=2015",
    "modelYear[1]=2015",
    "predictWheel=front",
    "predictWheel=rear",
    "tyreSize[0]=42",
    "tyreSize[1]=42",
    "tyreWeight[0]=600",
    "tyreWeight[1]=600",
    "rollingCoefficient[0]=0.007",
    "rollingCoefficient[1]=0.007",
    "brakeType[0]=disc brake",
    "brakeType[1]=disc brake",
    "brakeMaterial[1][0]=stainless",
    "brakeMaterial[1][1]=stainless",
    "brakeWeight[1][0]=130",
    "brakeWeight[1][1]=130",
    "brakeSurfaceSize[1][0]=180",
    "brakeSurfaceSize[1][1]=160",
    "motorLocation=hub",
    "maxEPower=250",
    "assistRangeMode[0]=constant",
    "assistRangeSpeed[0]=20",
    "assistRangeRatio[0]=1.2",
    "assistRangeMode[1]=linear",
    "assistRangeSpeed[1]=25",
    "assistRangeRatio[1]=0",
    "assistRangeMode[2]=none",
};

constexpr SampleProfile profiles[] = {
    {"road.pro", road},
    {"climbing.pro", climbing},
    {"time-trial.pro", timeTrial},
    {"commuter.pro", commuter},
};

} // namespace

std::span<const SampleProfile> sampleProfiles()
{
    return profiles;
}

bool writeSampleProfile(const SampleProfile& profile, const std::string& folder)
{
    std::vector<std::string> arguments;
    for (const char* setting : profile.settings) {
        arguments.push_back("--set");
        arguments.push_back(setting);
    }
    arguments.push_back("save-profile");
    arguments.push_back(folder + "/" + profile.name);
    std::ostringstream report, status;
    bool written = runConsole(arguments, report, status) == 0;
    if (!written)
        std::cerr << status.str();
    return written;
}

} // namespace torvane
