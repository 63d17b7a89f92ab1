# Mail::DeliveryStatus::BounceParser over the files of a folder, in the order of
# their names, or over one message from standard input. Prints how many messages
# it read; those that it gives up on count too.
use strict;
use warnings;
use Mail::DeliveryStatus::BounceParser;

sub classify {
    my ($file) = @_;
    local $/;
    my $text     = <$file>;
    my $reported = eval {
        my $bounce = Mail::DeliveryStatus::BounceParser->new($text);
        $bounce->is_bounce ? scalar $bounce->reports : 0;
    };
    return defined $reported ? 1 : 0;
}

local $SIG{__WARN__} = sub { };
if (!@ARGV) {
    classify(\*STDIN);
    exit 0;
}
my $folder = $ARGV[0];
opendir my $listing, $folder or die "$folder: $!\n";
my ($messages, $decided) = (0, 0);
for my $name (sort grep { -f "$folder/$_" } readdir $listing) {
    open my $file, '<:raw', "$folder/$name" or die "$folder/$name: $!\n";
    $decided += classify($file);
    ++$messages;
}
print "$messages\n";
warn "BounceParser gave up on ", $messages - $decided, " messages.\n" if $decided < $messages;
