#include "app/Renderer.h"
#include "tests/support/Files.h"

namespace palvera {
namespace {

TEST(RendererTest, tellsAProcessorFromADeviceThatDraws)
{
    for (const char* processor : {"", "llvmpipe (LLVM 15.0.6, 256 bits)", "softpipe", "SwiftShader Device (LLVM 16)",
                                  "Mesa DRI Software Rasterizer", "llvmpipe"})
        EXPECT_TRUE(isProcessor(processor)) << processor;
    for (const char* device : {"Mesa Intel(R) UHD Graphics 630 (CFL GT2)", "AMD Radeon RX 6600 (radeonsi, LLVM 15.0.6)",
                               "NVIDIA GeForce RTX 3060/PCIe/SSE2", "virgl (Mesa Intel(R) Xe Graphics)", "V3D 4.2"})
        EXPECT_FALSE(isProcessor(device)) << device;
}

TEST(RendererTest, asksOnlyWhereThereIsADevice)
{
    const std::pair<const char*, bool> cases[] = {
        {"null", false}, {"dri/card0", false}, {"dri/renderD128", true}, {"nvidiactl", true}, {"dxg", true}};
    for (const auto& [device, draws] : cases) {
        QTemporaryDir devices;
        QDir(devices.path()).mkdir("dri");
        writeFile(devices.filePath(device), {});
        EXPECT_EQ(hasGraphicsDevice(devices.path()), draws) << device;
    }
}

} // namespace
} // namespace palvera
