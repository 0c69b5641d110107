// The FPGA of a module: its image, its control registers, and the inputs that it pulls.
#include "sim/module_bench.h"

#include <gtest/gtest.h>

namespace tamrix::tests {

namespace {

TEST(module_fpga, starts_with_an_image_whose_last_block_is_shorter_than_the_others)
{
    for (const std::size_t size : {1u, 24575u, 24576u, 24577u, 2u * 24576u, 60000u}) {
        module_bench b;
        b.reset(2);
        EXPECT_TRUE(b.load_image(2, size)) << size;
        EXPECT_TRUE(b.notes().empty());
    }
    module_bench b;
    EXPECT_FALSE(b.load_image(2, 0)) << "nothing to start with";
}

TEST(module_fpga, reaches_the_socket_only_after_its_reset_and_connection)
{
    module_bench b;
    b.reset(2);
    EXPECT_TRUE(b.load_image(2, 30000));
    EXPECT_FALSE(b.pins(2, 255, 0));
    b.device.regout(1, 55);
    EXPECT_FALSE(b.pins(2, 255, 0));
    b.device.regout(0, 55);
    EXPECT_FALSE(b.pins(2, 255, 0));
    b.device.regout(1, 51);
    EXPECT_TRUE(b.pins(2, 0x5A, 0));
    EXPECT_TRUE(b.all_ports(0x5A));
    b.device.regout(1, 55);
    EXPECT_FALSE(b.pins(2, 255, 0)) << "held in reset";
    b.device.regout(1, 51);
    EXPECT_FALSE(b.pins(2, 255, 0)) << "still held";
    b.connect();
    EXPECT_EQ(b.device.regin(0), 255) << "the reset released the pins";
    b.pins(2, 0, 0);
    b.device.regout(0, 51);
    EXPECT_FALSE(b.pins(2, 255, 0)) << "disconnected";
    b.device.regout(1, 51);
    EXPECT_EQ(b.device.regin(0), 255) << "released when it was disconnected";
}

TEST(module_fpga, pulls_inputs_down_by_its_own_configuration_and_up_by_an_image)
{
    module_bench b;
    for (int pass = 0; pass < 2; ++pass) {
        b.reset(3);
        b.start(3);
        EXPECT_EQ(b.inputs(3, 0), 0);
        b.reset(3);
        EXPECT_TRUE(b.load_image(3, 100));
        b.connect();
        EXPECT_EQ(b.inputs(3, 1), 1);
        EXPECT_EQ(b.inputs(2, 0), 0) << "its neighbour has none";
    }
}

TEST(module_fpga, obeys_its_control_registers_on_the_named_module_only)
{
    module_bench b;
    b.pins(2, 255, 0);
    b.pins(1, 255, 0);
    b.device.regout(1, 55);
    EXPECT_FALSE(b.pins(1, 255, 0));
    EXPECT_TRUE(b.pins(2, 255, 0));
    b.pins(0, 255, 0);
    b.device.regout(7, 51);
    b.device.regout(0, 55);
    EXPECT_EQ(b.device.regin(51), 7) << "a plain register of the unit";
    EXPECT_FALSE(b.pins(1, 255, 0));
    b.device.regout(0, 55);
    EXPECT_TRUE(b.pins(1, 255, 0));
}

TEST(module_fpga, is_answered_for_by_the_number_of_the_block)
{
    module_bench b;
    EXPECT_FALSE(b.device.replywait(22, 91, 5)) << "nothing was loaded";
    EXPECT_TRUE(b.load_block(2, bytes(24576, 1), 0));
    EXPECT_FALSE(b.load_block(2, bytes(24576, 1), 2));
    EXPECT_TRUE(b.device.replywait(22, 92, 5)) << "that is the block which came";
    EXPECT_TRUE(b.load_block(2, bytes(5, 1), 2));
    EXPECT_EQ(b.ibuf1[1], 0x55);
    EXPECT_TRUE(b.load_image(2, 10)) << "the next image begins with 0 again";
    b.reset(2);
    EXPECT_FALSE(b.device.replywait(22, 91, 5));
}

TEST(module_fpga, begins_anew_after_the_reset_of_its_module)
{
    module_bench b;
    EXPECT_TRUE(b.load_block(2, bytes(24576, 1), 0));
    b.reset(2);
    EXPECT_FALSE(b.load_block(2, {}, 1));
    EXPECT_TRUE(b.load_image(2, 5));
}

TEST(module_fpga, refuses_a_block_of_another_length_than_announced)
{
    module_bench b;
    b.bulk(16, 128, 3, 0, 2);
    b.write(bytes(100, 1));
    b.bulk(16, 128, 3, 170, 2);
    EXPECT_TRUE(b.load_step(0, 101));
    EXPECT_TRUE(b.device.replywait(22, 91, 5));
    EXPECT_EQ(b.ibuf1[0], 0);
    EXPECT_EQ(b.ibuf1[1], 0);
}

TEST(module_fpga, has_lost_its_configuration_once_a_block_came)
{
    module_bench b;
    EXPECT_TRUE(b.load_block(2, bytes(24576, 1), 0));
    EXPECT_FALSE(b.pins(2, 0, 0));
    b.start(2);
    EXPECT_TRUE(b.pins(2, 0, 0));
}

TEST(module_faults, an_fpga_does_not_start_as_often_as_told)
{
    const struct {
        const char* fault;
        int passes;  // until it runs; 5: never
    } cases[] = {{"fpga 2 does not start once", 2},
                 {"fpga 2 does not start twice", 3},
                 {"fpga 2 does not start 3", 4},
                 {"fpga 2 does not start", 5},
                 {"fpga 3 does not start", 1}};
    for (const auto& one : cases) {
        module_bench b;
        b.programmer.add_fault(one.fault);
        b.reset(2);
        int pass = 1;
        while (pass < 5 && !b.load_image(2, 50000)) {
            EXPECT_EQ(b.ibuf1[0], 170) << "it takes the blocks";
            ++pass;
        }
        EXPECT_EQ(pass, one.passes) << one.fault;
        b.connect();
        EXPECT_EQ(b.inputs(2, 1), pass < 5 ? 1 : -1);
        b.start(2);
        EXPECT_EQ(b.inputs(2, 0), 0) << "its own configuration starts";
    }
}

TEST(module_faults, a_lost_acknowledge_leaves_the_answer_about_the_block)
{
    module_bench b;
    b.bulk(16, 128, 3, 0, 2);
    b.write({1});
    b.bulk(16, 128, 3, 170, 2);
    b.programmer.add_fault("lost reply");
    EXPECT_FALSE(b.load_step(0, 1));
    EXPECT_TRUE(b.device.replywait(22, 91, 5));
    b.programmer.add_fault("lost reply");
    EXPECT_FALSE(b.device.replywait(22, 91, 5));
}

}  // namespace
}  // namespace tamrix::tests
