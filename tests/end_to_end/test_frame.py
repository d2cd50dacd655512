"""The frame itself: its panes, its size, its end."""

from harness import QuilletTest, drag, key, middle


class Frame(QuilletTest):
    def drag_splitter(self, sight, to):
        tree, messages = sight.tree["rect"], sight.list["rect"]
        bar = (tree[0] + tree[2] + messages[0]) // 2
        drag((bar, middle(tree)[1]), (to, middle(tree)[1]))

    def test_splitter(self):
        program, sight = self.open()
        left, _, width, _ = sight.tree["rect"]
        self.assertAlmostEqual(width, 200, delta=4)

        self.drag_splitter(sight, left + 300)
        sight = program.wait_for(lambda now: abs(now.tree["rect"][2] - 300) <= 4, "a tree 300 wide")
        tree, messages = sight.tree["rect"], sight.list["rect"]
        self.assertLess(messages[0] - (tree[0] + tree[2]), 12, "the list begins beside the tree")
        client = sight.list["client"][2]
        self.assertEqual(sight.widths, [client // 2, client // 4, client // 4])

        self.drag_splitter(sight, left + 20)
        program.wait_for(lambda now: abs(now.tree["rect"][2] - 100) <= 4, "the tree at its minimum of 100")
        self.end()

    def drag_corner(self, sight, x, y):
        left, top, width, height = sight.main["rect"]
        corner = left + width - 2, top + height - 2
        drag(corner, (corner[0] + x, corner[1] + y))

    def test_size(self):
        program, sight = self.open()
        left, top, *_ = sight.main["rect"]
        self.drag_corner(sight, -900, -900)
        sight = program.wait_for(lambda now: now.main["rect"] == [left, top, 800, 580], "the least size, 800 x 580")
        self.drag_corner(sight, 60, 40)
        sight = program.wait_for(lambda now: now.main["rect"] == [left, top, 860, 620], "the size 860 x 620")
        client = sight.list["client"][2]
        self.assertEqual(sight.widths, [client // 2, client // 4, client // 4])
        bar = sight.control("msctls_statusbar32")["rect"]
        window = sight.main["client"]
        self.assertEqual((bar[0], bar[2], bar[1] + bar[3]), (window[0], window[2], window[1] + window[3]))
        self.end()

    def test_alt_f4_ends_it(self):
        program, _ = self.open()
        # Out of the tree first: under Wine a tree keeps this key to itself.
        key("Tab")
        program.wait_for(lambda now: now.list["focused"], "the list to have the focus")
        key("alt+F4")
        self.assertEqual(program.wait_for_end(), 0)
