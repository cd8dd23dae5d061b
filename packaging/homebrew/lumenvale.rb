# SPDX-License-Identifier: MIT
# Checked for its syntax only; no Mac has built it yet.
class Lumenvale < Formula
  desc "Brightness of every connected display in one small panel"
  homepage "https://lumenvale.app"
  url "https://lumenvale.app/releases/lumenvale-1.0.0.tar.gz"
  license "MIT"

  depends_on "cli11" => :build
  depends_on "cmake" => :build
  depends_on "ninja" => :build
  depends_on "nlohmann-json" => :build
  depends_on "tl-expected" => :build
  depends_on arch: :arm64
  depends_on macos: :sonoma
  depends_on "qtbase"
  depends_on "qtsvg"

  def install
    system "cmake", "-S", ".", "-B", "build", "-G", "Ninja", "-DLUMENVALE_TESTS=OFF", *std_cmake_args
    system "cmake", "--build", "build"
    prefix.install "build/Lumenvale.app"
    # Not a symbolic link: started through one, the program would not be the bundle's, and know nothing of its Info.plist.
    (bin/"lumenvale").write <<~SH
      #!/bin/bash
      exec "#{opt_prefix}/Lumenvale.app/Contents/MacOS/Lumenvale" "$@"
    SH
  end

  def caveats
    "To have Lumenvale among the applications: ln -s #{opt_prefix}/Lumenvale.app /Applications/"
  end

  test do
    assert_match "Lumenvale #{version}", shell_output("#{bin}/lumenvale --version")
    (testpath/"monitors/one.json").write('{"name": "One", "ddc": {"current": 42}}')
    assert_match "42%", shell_output("#{bin}/lumenvale --simulate #{testpath}/monitors get One")
  end
end
