# Takes the steps of a formula as Homebrew would, as far as ours uses them.
#
#   ruby try.rb FORMULA SOURCES PREFIX
require "pathname"

class Pathname
  def install(name)
    mkpath
    Kernel.system("cp", "-r", name, to_s) || abort("cannot install #{name}")
  end
end

class Formula
  class << self
    attr_reader :steps

    %i[desc license url sha256 version depends_on uses_from_macos].each { |name| define_method(name) { |*| } }

    def inherited(formula)
      @@formula = formula
    end

    def formula = @@formula

    def test(&steps)
      @steps = steps
    end
  end

  def initialize(prefix)
    @prefix = prefix
  end

  def bin = @prefix/"bin"
  def pkgshare = @prefix/"share/bouncecheck"
  def std_cmake_args = ["-DCMAKE_INSTALL_PREFIX=#{@prefix}", "-DCMAKE_BUILD_TYPE=Release"]

  def system(*command)
    Kernel.system(*command) || abort("failed: #{command.join(" ")}")
  end

  def shell_output(command)
    output = `#{command}`
    $?.success? ? output : abort("failed: #{command}")
  end

  def assert_match(wanted, found)
    found.include?(wanted) || abort("wanted #{wanted}, found #{found}")
  end
end

formula, sources, prefix = ARGV.map { |path| Pathname.new(path).expand_path }
load formula.to_s
tried = Formula.formula.new(prefix)
Dir.chdir(sources) { tried.install }
tried.instance_eval(&Formula.formula.steps)
